#include "app/startup/frmSplash.h"

#include "app/looks/Fonts.h"
#include "app/looks/ProductPicture.h"
#include "app/startup/ProgramText.h"
#include "app/startup/ProgramVersion.h"
#include "platform/qt/AnsiText.h"
#include "widgets/PlainLabel.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace app {

namespace {

constexpr int kPictureSize = 160; // logical pixels

// The labels take no clicks, so those land in the window itself.
widgets::PlainLabel* makeLabel(const char* name, const QFont& font, QWidget* parent)
{
    auto* label = new widgets::PlainLabel(QLatin1String(name), {}, parent);
    label->setFont(font);
    return label;
}

// A click or a key, whoever gets it.
bool isUsersAct(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::TouchBegin:
    case QEvent::ShortcutOverride: // a key that then is somebody's shortcut
    case QEvent::KeyPress:
        return true;
    default:
        return false;
    }
}

bool isWindowThatOpens(const QObject& watched, const QEvent& event)
{
    const auto* const widget = qobject_cast<const QWidget*>(&watched);
    return event.type() == QEvent::Show && widget != nullptr && widget->isWindow() &&
           widget->windowType() != Qt::ToolTip;
}

} // namespace

frmSplash::frmSplash(QWidget* mainWindow)
    : QWidget(mainWindow, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowDoesNotAcceptFocus)
{
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(platform::toQString(kProgramTitle));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_DeleteOnClose);
    auto* Frame1 = new QFrame(this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Frame1->setFrameStyle(QFrame::StyledPanel | QFrame::Raised);
    auto* imgLogo = new QLabel(Frame1);
    imgLogo->setObjectName(QStringLiteral("imgLogo"));
    showProductPicture(*imgLogo, kPictureSize);

    // Two fonts and no more: each costs the start a few milliseconds.
    const QFont large = arial(26, QFont::Bold);
    const QFont plain = arial(11);
    auto* names = new QVBoxLayout;
    names->setSpacing(2);
    names->addStretch();
    names->addWidget(makeLabel("lblCompanyProduct", plain, Frame1));
    names->addWidget(makeLabel("lblProductName", large, Frame1));
    names->addWidget(makeLabel("lblPlatform", plain, Frame1));
    names->addSpacing(12);
    names->addWidget(makeLabel("lblVersion", plain, Frame1));
    names->addWidget(makeLabel("lblPartNum", plain, Frame1));
    names->addStretch();

    auto* grid = new QGridLayout(Frame1);
    grid->setContentsMargins(28, 24, 36, 20);
    grid->setHorizontalSpacing(28);
    grid->setVerticalSpacing(16);
    grid->addWidget(imgLogo, 0, 0);
    grid->addLayout(names, 0, 1);
    grid->addWidget(makeLabel("lblWarning", plain, Frame1), 1, 0);
    grid->addWidget(makeLabel("lblCopyright", plain, Frame1), 1, 1, Qt::AlignRight);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(Frame1);
}

void frmSplash::showInMiddle()
{
    Form_Load();
    adjustSize();
    move(screen()->availableGeometry().center() - rect().center());
    show();
    QCoreApplication::instance()->installEventFilter(this);
}

void frmSplash::standAboveMainWindow()
{
    // Window managers raise what is shown, but not always what asks to be raised; and a window that belongs to another
    // one stays above it.
    hide();
    windowHandle()->setTransientParent(parentWidget()->windowHandle());
    show();
    QTimer::singleShot(kLongestStand, this, &QWidget::close);
}

void frmSplash::Form_Load()
{
    const auto set = [this](const char* name, std::string_view text) {
        findChild<widgets::PlainLabel*>(QLatin1String(name))->setAnsiText(text);
    };
    set("lblVersion", versionOnSplash(programVersion()));
    set("lblProductName", kProgramTitle);
    set("lblCompanyProduct", kCompanyName);
    set("lblCopyright", kLegalNotice);
    // Kept behaviour kb-for-windows: on every system.
    set("lblPlatform", "for Windows");
    set("lblPartNum", "P/N: 51208864");
    set("lblWarning", "All Rights Reserved");
}

void frmSplash::Form_Click()
{
    close();
}

void frmSplash::Form_KeyPress()
{
    close();
}

void frmSplash::mouseReleaseEvent([[maybe_unused]] QMouseEvent* event)
{
    Form_Click();
}

void frmSplash::keyPressEvent([[maybe_unused]] QKeyEvent* event)
{
    Form_KeyPress();
}

bool frmSplash::eventFilter(QObject* watched, QEvent* event)
{
    const bool isOwn = watched == this || watched == parentWidget();
    if (isUsersAct(*event) || (!isOwn && isWindowThatOpens(*watched, *event))) {
        close();
    }
    return false;
}

} // namespace app
