#include "app/dialogs/frmAbout.h"

#include "app/looks/ProductPicture.h"
#include "app/startup/ProgramText.h"
#include "app/startup/ProgramVersion.h"
#include "platform/qt/AnsiText.h"
#include "platform/qt/Spoken.h"
#include "widgets/PlainLabel.h"

#include <QFrame>
#include <QGridLayout>
#include <QHideEvent>
#include <QPushButton>
#include <QSysInfo>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

namespace app {

using platform::toQString;

namespace {

// Kept behaviour kb-driver-places: a driver elsewhere counts as missing.
constexpr std::array<std::string_view, 3> kDriverFiles = {
    R"(C:\Windows\System\Teslin.vxd)",           // 95, 98, ME
    R"(C:\WINNT\system32\drivers\Teslin.sys)",   // NT
    R"(C:\Windows\system32\drivers\Teslin.sys)", // 2000 and later
};
constexpr int kPictureSize = 96; // logical pixels
constexpr int kLineSpacing = 4;
constexpr int kButtonSpacing = 8;

bool isFile(const platform::DosNames& names, std::string_view dosName)
{
    const auto path = names.find(dosName);
    std::error_code ignored;
    return path && std::filesystem::exists(path.value(), ignored) &&
           !std::filesystem::is_directory(path.value(), ignored);
}

widgets::PlainLabel* makeLabel(const char* name, std::string_view text, QWidget* parent)
{
    auto* label = new widgets::PlainLabel(QLatin1String(name), text, parent);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse); // for a letter to the support
    return label;
}

QFrame* makeLine(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);
    return line;
}

QString systemInformation()
{
    return QStringLiteral("%1, %2, Qt %3")
        .arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture(), QLatin1String(qVersion()));
}

} // namespace

frmAbout::frmAbout(const platform::Registry& registry, platform::StartProgram& programs,
                   const platform::DosNames& names, platform::MessageBoxes& boxes, QWidget* parent)
    : QDialog(parent)
    , m_registry(registry)
    , m_programs(programs)
    , m_names(names)
    , m_boxes(boxes)
{
    setObjectName(QStringLiteral("frmAbout"));
    auto* picIcon = new QLabel(this);
    picIcon->setObjectName(QStringLiteral("picIcon"));
    platform::setSpoken(*picIcon, QStringLiteral("The Teslin"), {});
    showProductPicture(*picIcon, kPictureSize);

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(18, 18, 18, 18);
    grid->setHorizontalSpacing(18);
    grid->setVerticalSpacing(12);
    grid->addWidget(picIcon, 0, 0, Qt::AlignTop);
    grid->addLayout(makeTitle(), 0, 1, 1, 2);
    grid->addWidget(makeLine(this), 1, 0, 1, 3);
    grid->addLayout(makeNotices(), 2, 0, 1, 2);
    grid->addLayout(makeButtons(), 2, 2);
    grid->setColumnStretch(1, 1);
}

QLayout* frmAbout::makeTitle()
{
    auto* lblTitle = makeLabel("lblTitle", {}, this);
    QFont large = lblTitle->font();
    large.setPointSizeF(large.pointSizeF() * 1.6);
    large.setBold(true);
    lblTitle->setFont(large);
    auto* texts = new QVBoxLayout;
    texts->setSpacing(kLineSpacing); // inside a grid with two spacings a column has none of its own
    texts->addWidget(lblTitle);
    texts->addWidget(makeLabel("lblVersion", {}, this));
    texts->addWidget(makeLabel("lblPartNumber", {}, this));
    texts->addStretch();
    return texts;
}

QLayout* frmAbout::makeButtons()
{
    auto* cmdOK = new QPushButton(QStringLiteral("OK"), this);
    cmdOK->setObjectName(QStringLiteral("cmdOK"));
    cmdOK->setDefault(true);
    cmdOK->setFocus();
    auto* cmdSysInfo = new QPushButton(QStringLiteral("&System Info..."), this);
    cmdSysInfo->setObjectName(QStringLiteral("cmdSysInfo"));
    connect(cmdOK, &QPushButton::clicked, this, &frmAbout::cmdOK_Click);
    connect(cmdSysInfo, &QPushButton::clicked, this, &frmAbout::cmdSysInfo_Click);
    platform::setSpoken(*cmdOK, QStringLiteral("Closes this box"));
    platform::setSpoken(*cmdSysInfo, QStringLiteral("Starts the system's own information program"));
    auto* buttons = new QVBoxLayout;
    buttons->setSpacing(kButtonSpacing);
    buttons->addWidget(cmdOK);
    buttons->addWidget(cmdSysInfo);
    return buttons;
}

QLayout* frmAbout::makeNotices()
{
    auto* notices = new QVBoxLayout;
    notices->setSpacing(kLineSpacing);
    notices->addWidget(makeLabel("Label1", kLegalNotice, this));
    notices->addWidget(makeLabel("lblDisclaimer", "All rights reserved", this));
    notices->addWidget(makeLabel("SysInfo", platform::toAnsi(systemInformation()), this));
    notices->addStretch();
    return notices;
}

void frmAbout::Form_Load()
{
    setWindowTitle(QStringLiteral("About ") + toQString(kProgramTitle));
    findChild<widgets::PlainLabel*>(QStringLiteral("lblVersion"))->setAnsiText(versionInAbout(programVersion()));
    findChild<widgets::PlainLabel*>(QStringLiteral("lblTitle"))->setAnsiText(kProgramTitle);
    findChild<widgets::PlainLabel*>(QStringLiteral("lblPartNumber"))->setAnsiText("Part Number: 51208864");
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

void frmAbout::cmdOK_Click()
{
    close();
}

void frmAbout::cmdSysInfo_Click()
{
    StartSysInfo();
}

void frmAbout::hideEvent(QHideEvent* event)
{
    QDialog::hideEvent(event);
    if (!event->spontaneous()) { // the window system hides a minimised window
        emit unloaded();
    }
}

// --- Driver check ---

bool frmAbout::hasDriverFile(const std::function<bool(std::string_view)>& exists)
{
    return std::any_of(kDriverFiles.begin(), kDriverFiles.end(), exists);
}

bool frmAbout::KSD_Driver_Is_Installed(const platform::DosNames& names, platform::MessageBoxes& boxes,
                                       platform::Beep& beep)
{
    const bool installed = hasDriverFile([&names](std::string_view file) { return isFile(names, file); });
    if (!installed) {
        beep.sound();
        boxes.show({.text = driverMissing(), .icon = platform::BoxIcon::Critical});
    }
    return installed;
}

// --- System information ---

void frmAbout::StartSysInfo()
{
    if (!startedSysInfo()) {
        m_boxes.show({.text = "System Information Is Unavailable At This Time"});
    }
}

bool frmAbout::startedSysInfo()
{
    std::string path;
    if (GetKeyValue(platform::kLocalMachine, R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)", "PATH", path)) {
        return m_programs.start(path.substr(0, path.find('\0')));
    }
    if (GetKeyValue(platform::kLocalMachine, R"(SOFTWARE\Microsoft\Shared Tools Location)", "MSINFO", path)) {
        // A folder with variables in it comes as it is stored, its terminator included.
        path = m_programs.withVariables(path.substr(0, path.find('\0'))) + R"(\MSINFO32.EXE)";
        return isFile(m_names, path) && m_programs.start(path);
    }
    return false;
}

bool frmAbout::GetKeyValue(std::uint32_t KeyRoot, std::string_view KeyName, std::string_view SubKeyRef,
                           std::string& KeyVal) const
{
    const auto value = m_registry.read(KeyRoot, KeyName, SubKeyRef);
    if (!value) {
        return false;
    }
    KeyVal = platform::registryValueText(*value);
    return true;
}

} // namespace app
