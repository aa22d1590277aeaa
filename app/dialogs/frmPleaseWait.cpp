#include "app/dialogs/frmPleaseWait.h"

#include "app/startup/ProgramText.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/ShownWindow.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>

namespace app {

frmPleaseWait::frmPleaseWait(platform::WindowOrder& order, QWidget* parent)
    : QFrame(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
    , m_order(order)
{
    setObjectName(QStringLiteral("frmPleaseWait"));
    setWindowTitle(platform::toQString(kProgramTitle));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    setFrameStyle(QFrame::Panel | QFrame::Raised);
    setLineWidth(2);
    auto* label = new QLabel(QStringLiteral("Please Wait..."), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    label->setFont(font);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(36, 24, 36, 24);
    row->setSizeConstraint(QLayout::SetFixedSize); // or its text could be cut
    row->addWidget(label);
}

void frmPleaseWait::showOver(const QWidget& window)
{
    if (!isVisible()) {
        Form_Load();
    }
    adjustSize();
    move(window.geometry().center() - rect().center());
    show();
    if (!window.isMinimized()) { // or it will not be shown before the window comes back
        platform::waitUntilShown(*this);
    }
}

void frmPleaseWait::unload()
{
    if (isVisible()) {
        Form_Unload();
        hide();
    }
}

void frmPleaseWait::closeEvent(QCloseEvent* event)
{
    event->ignore(); // a window manager's key for closing
}

void frmPleaseWait::Form_Load()
{
    putInOrder(platform::kTopmost);
}

void frmPleaseWait::Form_Unload()
{
    putInOrder(platform::kTopOfOrdinaryWindows);
}

void frmPleaseWait::putInOrder(int insertAfter)
{
    m_order.SetWindowPos(*this, insertAfter, platform::kKeepSizeAndPlace);
}

} // namespace app
