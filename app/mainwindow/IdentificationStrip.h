#pragma once

#include "device/LinkWindow.h"
#include "widgets/Lamp.h"

#include <QLabel>
#include <QWidget>

#include <array>
#include <string_view>

namespace app {

// The strip above the tabs: what driver and reader say about themselves, the reader's keyboard layout, and the two
// lamps of the link. Its height is that of one line whatever it shows.
class IdentificationStrip final : public QWidget
{
    Q_OBJECT

public:
    explicit IdentificationStrip(QWidget* parent = nullptr);

    void setCaption(device::Identification which, std::string_view caption);
    void showValueAndTitle(device::Identification which, bool visible);
    void showValue(device::Identification which);
    void setLanguage(std::string_view caption);

    [[nodiscard]] widgets::Lamp& shpSend() { return *m_send; }
    [[nodiscard]] widgets::Lamp& shpRecv() { return *m_recv; }

signals:
    // The caption of lblDriverName has really changed.
    void lblDriverName_Change(const QString& caption);

private:
    struct Entry
    {
        QLabel* title = nullptr;
        QLabel* value = nullptr;
    };
    [[nodiscard]] Entry& entry(device::Identification which) { return m_entries[static_cast<std::size_t>(which)]; }
    [[nodiscard]] QLabel* makeLabel(const char* name, const QString& text);

    std::array<Entry, 3> m_entries;
    QLabel* m_language = nullptr;
    widgets::Lamp* m_send = nullptr;
    widgets::Lamp* m_recv = nullptr;
};

} // namespace app
