#include "cli/Commands.h"
#include "platform/DosNameSteps.h"
#include "platform/DosNames.h"
#include "platform/PortClaim.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <system_error>
#include <vector>

// Looks at what stands between this program and the reader, and opens none of it.
namespace cli {

namespace {

namespace fs = std::filesystem;

enum class State { Good, Note, Wrong };

struct Finding
{
    State state;
    std::string subject;
    std::string text;
    std::string remedy;
};

std::string_view nameOf(State state)
{
    switch (state) {
    case State::Good:
        return "good";
    case State::Note:
        return "note";
    case State::Wrong:
        break;
    }
    return "wrong";
}

// "/home/me/.teslin/dosdevices/com5, which is /dev/ttyUSB0".
std::string placeText(const fs::path& path)
{
    std::error_code unknown;
    const fs::path target = fs::canonical(path, unknown);
    return path.string() + (unknown || target == path ? std::string() : ", which is " + target.string());
}

class Examination final
{
public:
    explicit Examination(const Arguments& arguments)
        : m_arguments(arguments)
        , m_folder(arguments.dosDevices.empty() ? platform::DosNames::defaultFolder() : arguments.dosDevices)
        , m_names(m_folder)
    {}

    [[nodiscard]] std::vector<Finding> run()
    {
#ifndef _WIN32
        if (!folderIsThere()) {
            return m_findings;
        }
#endif
        lookAtDriver();
        lookAtPorts();
        lookAtDriverFile();
        return m_findings;
    }

private:
    void add(State state, const std::string& subject, const std::string& text, const std::string& remedy = {})
    {
        m_findings.push_back({state, subject, text, remedy});
    }

    [[nodiscard]] bool folderIsThere()
    {
        std::error_code unknown;
        if (fs::is_directory(m_folder, unknown)) {
            add(State::Good, "Folder of names", placeText(m_folder));
            return true;
        }
        add(State::Wrong, "Folder of names", m_folder.string() + " is not there",
            "Name the folder with --dosdevices or $TESLIN_DOSDEVICES, or make ~/.teslin/dosdevices. The driver, or "
            "ksd-simulator --dosdevices, fills it.");
        return false;
    }

    // The way from a name to what it stands for; nothing when it leads nowhere or may not be gone.
    [[nodiscard]] std::optional<fs::path> follow(const std::string& name, const std::string& remedy)
    {
        const platform::Result<fs::path> found = m_names.find(name);
        if (!found) {
            add(State::Wrong, name, found.error().description, remedy);
            return std::nullopt;
        }
        if (!platform::mayReadAndWrite(found.value())) {
            add(State::Wrong, name, placeText(found.value()) + ", and you may not read and write it",
                "Ask for the right to use it; a serial device usually belongs to the group dialout.");
            return std::nullopt;
        }
        return found.value();
    }

    void lookAtDriver()
    {
        const std::string name = R"(\\.\)" + m_arguments.driverName;
        if (const auto place = follow(name, "Install the driver and attach the reader, or give the driver's name with "
                                            "--name. The name must not be a link to a device that is gone.")) {
            add(State::Good, name, placeText(*place));
        }
    }

    [[nodiscard]] std::vector<std::string> ports() const
    {
        if (m_arguments.port != 0) {
            return {"COM" + std::to_string(m_arguments.port)};
        }
        std::vector<std::string> names;
        std::error_code unreadable;
        for (fs::directory_iterator entry(m_folder, unreadable), end; !unreadable && entry != end;
             entry.increment(unreadable)) {
            const std::string name = entry->path().filename().string();
            if (platform::isPortName(name)) {
                names.push_back("COM" + name.substr(3));
            }
        }
        std::ranges::sort(names);
        return names;
    }

    void lookAtPorts()
    {
        const std::vector<std::string> names = ports();
        for (const std::string& name : names) {
            lookAtPort(name);
        }
#ifndef _WIN32
        if (names.empty()) {
            add(State::Wrong, "Ports", "no port is entered in " + m_folder.string(),
                "The driver makes one, such as com5, when the reader is attached.");
        }
#endif
    }

    void lookAtPort(const std::string& name)
    {
        const auto place =
            follow(name, "Attach the reader; if it is attached, the name leads to a device that is gone.");
        if (!place) {
            return;
        }
        if (!platform::isDevice(*place)) {
            add(State::Wrong, name, placeText(*place) + ", which is no serial device",
                "Let the name lead to the driver's terminal device.");
            return;
        }
        const std::vector<platform::PortHolder> holders = platform::portHolders(*place);
        for (const platform::PortHolder& holder : holders) {
            add(State::Wrong, name,
                placeText(*place) + ", in use by " + holder.name + " (process " + std::to_string(holder.process) + ")",
                "Close that program: one reader, one program.");
        }
        if (holders.empty()) {
            add(State::Good, name, placeText(*place) + ", free");
        }
    }

    void lookAtDriverFile()
    {
        for (const char* const name : {R"(C:\Windows\system32\drivers\Teslin.sys)",
                                       R"(C:\WINNT\system32\drivers\Teslin.sys)", R"(C:\Windows\System\Teslin.vxd)"}) {
            const platform::Result<fs::path> found = m_names.find(name);
            std::error_code unknown;
            if (found && fs::exists(found.value(), unknown)) {
                add(State::Good, "Driver file", placeText(found.value()));
                return;
            }
        }
        add(State::Note, "Driver file", "not where the driver's set-up puts it; the window warns of that at its start",
            "Nothing needs to be done if the driver's name above is good.");
    }

    const Arguments& m_arguments;
    fs::path m_folder;
    platform::DosNames m_names;
    std::vector<Finding> m_findings;
};

} // namespace

Exit doctor(const Arguments& arguments, Console& console)
{
    const std::vector<Finding> findings = Examination(arguments).run();
    const bool isWell = std::ranges::none_of(findings, [](const Finding& f) { return f.state == State::Wrong; });
    const Exit exit = isWell ? Exit::Done : Exit::NoPort;
    Json list = Json::array();
    for (const Finding& finding : findings) {
        console.print(std::string(nameOf(finding.state)) + "  " + finding.subject + ": " + finding.text);
        if (!finding.remedy.empty()) {
            console.print("       " + finding.remedy);
        }
        list.push_back({{"state", nameOf(finding.state)},
                        {"subject", finding.subject},
                        {"text", finding.text},
                        {"remedy", finding.remedy.empty() ? Json() : Json(finding.remedy)}});
    }
    Json json = document(arguments, exit);
    json["findings"] = std::move(list);
    console.answer(json);
    return exit;
}

} // namespace cli
