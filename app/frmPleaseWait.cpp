#include "app/frmPleaseWait.h"

#include "app/ProgramText.h"
#include "platform/qt/AnsiText.h"

#include <QHBoxLayout>
#include <QLabel>

namespace app {

frmPleaseWait::frmPleaseWait(platform::WindowOrder& order, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowTitleHint | Qt::CustomizeWindowHint)
    , m_order(order)
{
    setObjectName(QStringLiteral("frmPleaseWait"));
    setWindowTitle(platform::toQString(kProgramTitle));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::NoFocus);
    auto* label = new QLabel(tr("Please Wait..."), this);
    label->setObjectName(QStringLiteral("Label1"));
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.4);
    label->setFont(font);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(36, 24, 36, 24);
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
}

void frmPleaseWait::unload()
{
    if (isVisible()) {
        Form_Unload();
        hide();
    }
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
