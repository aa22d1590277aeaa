#pragma once

#include "platform/qt/AnsiText.h"
#include "tables/LiveTable.h"
#include "tables/TableKind.h"
#include "tables/ui/ConfigurationEditor.h"
#include "tables/ui/KeyboardLanguageEditor.h"
#include "tables/ui/ParamGrid.h"
#include "tests/support/TestMessageBoxes.h"

#include <QAbstractButton>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTest>

#include <functional>
#include <string>
#include <utility>
#include <vector>

// A small window with both grids and both editors, wired as the main window wires them, for tests of the editors.
namespace testsupport {

// A device that writes down what it is asked to send.
class RecordingDevice final : public tables::DeviceSender
{
public:
    [[nodiscard]] bool isBusy() const override { return busy; }
    bool sendRow_CFG(const std::string& address) override { return operation("row " + address); }
    void sendSettings(std::span<const std::string> settings, const std::function<void()>& whenSent) override
    {
        std::string call = "settings";
        for (const std::string& setting : settings) {
            call += " " + setting;
        }
        if (operation(std::move(call)) && !isCutShort) {
            busy = true;
            whenSent();
            busy = false;
        }
    }

    bool busy = false;
    bool opens = true;
    bool isCutShort = false;            // the connection is lost on the way
    std::function<void()> whileSending; // what the user does meanwhile
    std::vector<std::string> calls;

private:
    bool operation(std::string call)
    {
        if (busy) {
            return false;
        }
        calls.push_back(std::move(call));
        busy = true;
        if (opens && whileSending) {
            whileSending();
        }
        busy = false;
        return opens;
    }
};

class EditorWindow : public QWidget, public tables::StatusLine, public tables::UnsavedChanges
{
public:
    enum Page { ConfigurationPage, KeyboardLanguagePage };

    EditorWindow()
    {
        resize(1000, 560);
        auto* row = new QHBoxLayout(this);
        row->addWidget(&m_pages);
        editor_CFG = new tables::ConfigurationEditor(CFG, session, *this, device, boxes);
        editor_KB = new tables::KeyboardLanguageEditor(KB, session, *this, device, boxes);
        addPage(*grdCFG, *editor_CFG, "grdCFG");
        addPage(*grdKB, *editor_KB, "grdKB");
        wire(*grdCFG, CFG);
        wire(*grdKB, KB);
        connect(grdCFG, &tables::ParamGrid::rowDoubleClicked, editor_CFG,
                &tables::ConfigurationEditor::grdCFG_DblClick);
        connect(grdKB, &tables::ParamGrid::rowDoubleClicked, editor_KB,
                &tables::KeyboardLanguageEditor::grdKB_DblClick);
        QObject::connect(editor_KB, &tables::KeyboardLanguageEditor::emptyDecEntryShown, editor_CFG,
                         &tables::ConfigurationEditor::showEmptyDecEntry);
        session.Hide_All();
        KB.InitGrid();
        CFG.InitGrid();
        show();
        activateWindow(); // only an active window moves the focus
        if (!QTest::qWaitForWindowActive(this)) {
            qFatal("the window did not become active");
        }
    }

    // Shows a table and opens the editor of its current row, as choosing its tab does.
    void showPage(Page page)
    {
        m_pages.setCurrentIndex(page);
        live(page).reopenEditor();
    }

    tables::LiveTable& live(Page page) { return page == ConfigurationPage ? CFG : KB; }

    // Opens the row of an address with a value, as selecting it after the value came does.
    void open(Page page, const QString& address, const QString& value)
    {
        const int row = rowOf(page, address);
        QVERIFY2(row > 0, qPrintable(address));
        live(page).table().setCell(row, tables::kValueColumn, platform::toAnsi(value));
        live(page).grid().setRow(row);
        live(page).reopenEditor();
        QCOMPARE(QString::fromStdString(session.CurrentAddress), address);
    }
    void openCfg(const QString& address, const QString& value) { open(ConfigurationPage, address, value); }
    void openKb(const QString& address, const QString& value)
    {
        m_pages.setCurrentIndex(KeyboardLanguagePage);
        open(KeyboardLanguagePage, address, value);
    }

    // Puts a row of any address into the table, in place of an existing one, as loading a file does.
    void replaceRow(Page page, int row, const QString& address, const QString& value, const QString& notes)
    {
        live(page).table().SetGridItem(row, platform::toAnsi(address), platform::toAnsi(value),
                                       platform::toAnsi(notes));
    }

    int rowOf(Page page, const QString& address)
    {
        const tables::ParamTable& table = live(page).table();
        for (int row = 1; row < table.rowCount(); ++row) {
            if (platform::toQString(table.cell(row, tables::kAddressColumn)) == address) {
                return row;
            }
        }
        return 0;
    }

    QString cell(Page page, const QString& address, tables::Column column)
    {
        return platform::toQString(live(page).table().cell(rowOf(page, address), column));
    }
    QString valueCfg(const QString& address) { return cell(ConfigurationPage, address, tables::kValueColumn); }
    QString valueKb(const QString& address) { return cell(KeyboardLanguagePage, address, tables::kValueColumn); }
    QString markCfg(const QString& address) { return cell(ConfigurationPage, address, tables::kChangedColumn); }
    QString markKb(const QString& address) { return cell(KeyboardLanguagePage, address, tables::kChangedColumn); }

    // A control by its name; the test fails where there is none.
    template <typename Control = QWidget>
    Control* control(const char* name)
    {
        auto* found = findChild<Control*>(QLatin1String(name));
        if (found == nullptr) {
            qFatal("no control %s", name);
        }
        return found;
    }
    QLineEdit* box(const char* name) { return control<QLineEdit>(name); }
    QLabel* label(const char* name) { return control<QLabel>(name); }
    QAbstractButton* option(const char* array, int index)
    {
        return control<QAbstractButton>(qPrintable(QStringLiteral("%1_%2").arg(QLatin1String(array)).arg(index)));
    }
    // The index of an array's selected option, -1 for none.
    int selected(const char* array) { return control<QButtonGroup>(array)->checkedId(); }

    void click(const char* array, int index) { click(option(array, index)); }
    void click(const char* checkBox) { click(control<QAbstractButton>(checkBox)); }

    void setStatusText(std::string_view text) override
    {
        panel1 = platform::toQString(text);
        panelTexts.push_back(panel1);
    }
    [[nodiscard]] bool CheckForUnsavedData(tables::TableId /*table*/) override { return true; }

    QString panel1;
    QStringList panelTexts;
    QString tabCaption[2];
    RecordingDevice device;
    TestMessageBoxes boxes;
    tables::EditSession session;

private:
    class PageDisplay final : public tables::TableDisplay
    {
    public:
        explicit PageDisplay(QString& caption)
            : m_caption(caption)
        {}
        void setTabCaption(std::string_view caption) override { m_caption = platform::toQString(caption); }
        void forgetCommentsAndFile() override {}
        void beep() override {}
        void processPendingEvents() override {}

    private:
        QString& m_caption;
    };

    void addPage(QWidget& grid, QWidget& editor, const char* gridName)
    {
        grid.setObjectName(QLatin1String(gridName));
        auto* page = new QWidget;
        auto* row = new QHBoxLayout(page);
        row->addWidget(&grid, 1);
        row->addWidget(&editor, 1);
        m_pages.addWidget(page);
    }

    void wire(tables::ParamGrid& grid, tables::LiveTable& table)
    {
        connect(&grid, &tables::ParamGrid::rowCurrentChanged, this, [&table] { table.rowChanged(); });
        connect(&grid, &tables::ParamGrid::selectionMoved, this, [&table] { table.selectionChanged(); });
    }

    static void click(QAbstractButton* button)
    {
        QVERIFY2(button->isVisible(), qPrintable(button->objectName()));
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }

    tables::ParamTable m_table_CFG{tables::configurationKind()};
    tables::ParamTable m_table_KB{tables::keyboardLanguageKind()};
    PageDisplay m_display_CFG{tabCaption[ConfigurationPage]};
    PageDisplay m_display_KB{tabCaption[KeyboardLanguagePage]};
    QStackedWidget m_pages;

public:
    tables::ParamGrid* grdCFG = new tables::ParamGrid(m_table_CFG);
    tables::ParamGrid* grdKB = new tables::ParamGrid(m_table_KB);
    tables::LiveTable CFG{
        m_table_CFG,
        {.grid = *grdCFG, .display = m_display_CFG, .status = *this, .unsaved = *this, .session = session}};
    tables::LiveTable KB{
        m_table_KB, {.grid = *grdKB, .display = m_display_KB, .status = *this, .unsaved = *this, .session = session}};
    tables::ConfigurationEditor* editor_CFG = nullptr;
    tables::KeyboardLanguageEditor* editor_KB = nullptr;
};

} // namespace testsupport
