#include "app/mainwindow/TabChange.h"

#include <QShortcut>

namespace app {

TabChange::TabChange(MainWindowControls& controls, device::ReaderLink& link, tables::ParamTables& tables)
    : m_controls(controls)
    , m_link(link)
    , m_tables(tables)
{
    QObject::connect(controls.SSTab1, &QTabWidget::currentChanged, controls.SSTab1, [this] {
        m_controls.takeKeyboardFrom(
            *m_controls.SSTab1->currentWidget()); // from whatever had it there last, hidden perhaps
        tabMoved();
    });
    const auto onTabKeys = [this](Qt::KeyboardModifiers modifiers, int step) {
        auto* keys = new QShortcut(QKeySequence(modifiers | Qt::Key_Tab), &m_controls.window);
        QObject::connect(keys, &QShortcut::activated, keys, [this, step] { goToNextTab(step); });
    };
    onTabKeys(Qt::ControlModifier, 1);
    onTabKeys(Qt::ControlModifier | Qt::ShiftModifier, -1);
}

int TabChange::tabInEffect() const
{
    return m_tables.session.tableInEffect ? tabOf(*m_tables.session.tableInEffect) : kReadTestTab;
}

void TabChange::tabMoved()
{
    const int shown = m_controls.SSTab1->currentIndex();
    if (m_link.isBusy() || m_isStopped || shown == tabInEffect()) {
        return;
    }
    const int previousTab = tabInEffect();
    m_tables.session.tableInEffect = tableOn(shown);
    m_link.operations().run([this, previousTab] {
        SSTab1_Click(previousTab);
        if (m_link.operations().isClosing()) {
            m_tables.session.tableInEffect = tableOn(previousTab); // cut short; comes again when the window stays open
        }
    });
}

void TabChange::goToTab(tables::TableId table)
{
    m_controls.SSTab1->setCurrentIndex(tabOf(table));
    tabMoved();
}

bool TabChange::select(tables::TableId table)
{
    if (m_link.isBusy()) {
        return false;
    }
    goToTab(table);
    return m_tables.session.tableInEffect == table && !m_isStopped;
}

void TabChange::goToNextTab(int step)
{
    QTabWidget& tabs = *m_controls.SSTab1;
    if (tabs.currentIndex() != kReadTestTab) {
        tabs.setCurrentIndex((tabs.currentIndex() + step + tabs.count()) % tabs.count());
    }
}

tables::TableId TabChange::shownTable() const
{
    return m_tables.session.tableInEffect.value_or(tables::TableId::KeyboardLanguage);
}

void TabChange::SSTab1_Click(int previousTab)
{
    if (previousTab == kReadTestTab) {
        m_link.readTest().leave();
    }
    // Not the tab that is shown: the user may have gone on to another one, whose turn comes afterwards.
    if (m_tables.session.tableInEffect) {
        showTable(*m_tables.session.tableInEffect);
        return;
    }
    m_controls.takeKeyboardFrom(*m_controls.Toolbar1);
    m_controls.Toolbar1->button(ToolbarKey::Retrieve).setEnabled(false);
    m_controls.Toolbar1->button(ToolbarKey::Update).setEnabled(false);
    m_link.readTest().StartReadTest();
}

void TabChange::showTable(tables::TableId table)
{
    m_controls.btnNotes->show();
    m_controls.Toolbar1->EnableButtons(true);
    m_tables.of(table).reopenEditor();
    m_controls.showFileName(table);
}

} // namespace app
