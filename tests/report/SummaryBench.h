#pragma once

#include "report/ui/frmSummary.h"
#include "tests/support/RecordingWindowOrder.h"
#include "tests/support/TestFileDialogs.h"
#include "tests/support/TestPrinter.h"

#include <QRect>
#include <QStringList>

#include <optional>
#include <string>
#include <vector>

// Everything that the summary window uses of the system, for tests.
namespace summarybench {

[[nodiscard]] inline QRect placementOf(const QWidget& form)
{
    return {form.pos(), form.size()};
}

// Placements in memory; tells in order what it was asked.
class Placements final
{
public:
    bool restore(QWidget& form)
    {
        asked += QStringLiteral("restore ") + form.objectName() +
                 (form.isVisible() ? QStringLiteral(" (shown)") : QString());
        if (stored) {
            form.resize(stored->size());
            form.move(stored->topLeft());
        }
        return stored.has_value();
    }

    void save(const QWidget& form)
    {
        asked += QStringLiteral("save ") + form.objectName();
        saved = placementOf(form);
        savedState = form.windowState();
    }

    std::optional<QRect> stored;
    std::optional<QRect> saved;
    Qt::WindowStates savedState;
    QStringList asked;
};

struct Saved
{
    std::filesystem::path file;
    std::string bytes;
};

struct Bench
{
    testsupport::TestPrinter printer;
    testsupport::TestFileDialogs dialogs;
    Placements placements;
    testsupport::RecordingWindowOrder windowOrder;
    bool canSave = true;
    std::vector<Saved> saved;

    [[nodiscard]] report::SummaryServices services()
    {
        return {.printer = printer,
                .dialogs = dialogs,
                .windowOrder = windowOrder,
                .saveFile =
                    [this](const std::filesystem::path& file, std::string_view bytes) {
                        saved.push_back({file, std::string(bytes)});
                        return canSave;
                    },
                .restorePlacement = [this](QWidget& form) { return placements.restore(form); },
                .savePlacement = [this](const QWidget& form) { placements.save(form); },
                .programFolder = "/the/program"};
    }
};

} // namespace summarybench
