#pragma once

#include "platform/qt/AnsiText.h"
#include "tables/LiveTable.h"
#include "tables/TableHost.h"
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

// A device that writes down what it is asked to do.
class RecordingDevice final : public tables::DeviceSender
{
public:
    [[nodiscard]] bool isBusy() const override { return busy; }
    bool run(const std::function<void()>& work) override
    {
        if (busy) {
            return false;
        }
        busy = true;
        work();
        busy = false;
        return true;
    }
    [[nodiscard]] bool OpenTheDeviceDriver() override
    {
        calls.push_back("open");
        return opens;
    }
    void CloseTheDeviceDriver() override { calls.push_back("close"); }
    void Send_Cmd(std::string_view cmd) override { send("Send_Cmd " + std::string(cmd)); }
    void Send_Parameter_CFG(const std::string& address) override { send("Send_Parameter_CFG " + address); }

    bool busy = false;
    bool opens = true;
    std::function<void()> whileSending; // what the user does meanwhile
    std::vector<std::string> calls;

private:
    void send(std::string call)
    {
        QVERIFY2(busy, "sent outside a device operation");
        calls.push_back(std::move(call));
        if (whileSending) {
            whileSending();
        }
    }
};

class EditorWindow : public QWidget, public tables::EditorHost
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
        EditorWindow::Hide_All();
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

    // EditorHost
    void Hide_All() override
    {
        editor_CFG->hideControls();
        editor_KB->hideControls();
    }
    void setStatusText(std::string_view text) override
    {
        panel1 = platform::toQString(text);
        panelTexts.push_back(panel1);
    }
    void showEmptyDecEntry() override { editor_CFG->showEmptyDecEntry(); }

    QString panel1;
    QStringList panelTexts;
    QString tabCaption[2];
    RecordingDevice device;
    TestMessageBoxes boxes;
    tables::EditSession session;

private:
    class PageHost final : public tables::TableHost
    {
    public:
        PageHost(EditorWindow& window, Page page)
            : m_window(window)
            , m_page(page)
        {}
        [[nodiscard]] bool CheckForUnsavedData() override { return true; }
        void Hide_All() override { m_window.Hide_All(); }
        void EditData() override
        {
            if (m_page == ConfigurationPage) {
                m_window.editor_CFG->EditData_CFG();
            } else {
                m_window.editor_KB->EditData_KB();
            }
        }
        void forgetCommentsAndFile() override {}
        void setTabCaption(std::string_view caption) override
        {
            m_window.tabCaption[m_page] = platform::toQString(caption);
        }
        void setEditTitle(std::string_view title) override
        {
            if (m_page == ConfigurationPage) {
                m_window.editor_CFG->setEditTitle(title);
            } else {
                m_window.editor_KB->setEditTitle(title);
            }
        }
        void setStatusText(std::string_view text) override { m_window.setStatusText(text); }
        void beep() override {}
        void processPendingEvents() override {}

    private:
        EditorWindow& m_window;
        Page m_page;
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
    PageHost m_host_CFG{*this, ConfigurationPage};
    PageHost m_host_KB{*this, KeyboardLanguagePage};
    QStackedWidget m_pages;

public:
    tables::ParamGrid* grdCFG = new tables::ParamGrid(m_table_CFG);
    tables::ParamGrid* grdKB = new tables::ParamGrid(m_table_KB);
    tables::LiveTable CFG{m_table_CFG, *grdCFG, m_host_CFG, session};
    tables::LiveTable KB{m_table_KB, *grdKB, m_host_KB, session};
    tables::ConfigurationEditor* editor_CFG = nullptr;
    tables::KeyboardLanguageEditor* editor_KB = nullptr;
};

} // namespace testsupport
