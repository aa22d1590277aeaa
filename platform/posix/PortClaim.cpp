#include "platform/PortClaim.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>

#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kPseudoTerminals = "/dev/pts/";

std::string firstLineOf(const fs::path& file)
{
    std::ifstream stream(file);
    std::string line;
    std::getline(stream, line);
    return line;
}

// A process that has the other side of a pseudo-terminal open plays the device.
bool isOtherSide(const fs::path& process, const fs::path& descriptor, const std::string& index)
{
    std::ifstream info(process / "fdinfo" / descriptor.filename());
    const std::string text{std::istreambuf_iterator<char>(info), {}};
    const std::size_t at = text.find("tty-index:");
    if (at == std::string::npos) {
        return false;
    }
    const std::size_t digits = text.find_first_of("0123456789", at);
    return digits != std::string::npos && text.substr(digits, text.find('\n', digits) - digits) == index;
}

// Whether a process has the device open and does not play it.
bool holds(const fs::path& process, const fs::path& device)
{
    const std::string path = device.string();
    const std::string index = path.starts_with(kPseudoTerminals) ? path.substr(kPseudoTerminals.size()) : std::string();
    bool found = false;
    std::error_code error;
    for (fs::directory_iterator descriptor(process / "fd", error), end; !error && descriptor != end;
         descriptor.increment(error)) {
        std::error_code unreadable;
        const fs::path target = fs::read_symlink(descriptor->path(), unreadable);
        if (target == device) {
            found = true;
        } else if (!index.empty() && target.filename() == "ptmx" && isOtherSide(process, descriptor->path(), index)) {
            return false;
        }
    }
    return found;
}

std::optional<long> processNumber(const fs::path& entry)
{
    const std::string name = entry.filename().string();
    if (name.empty() || name.find_first_not_of("0123456789") != std::string::npos) {
        return std::nullopt;
    }
    return std::stol(name);
}

} // namespace

Result<void> claimPort(std::intptr_t handle)
{
    const int port = static_cast<int>(handle);
#ifdef TIOCGEXCL
    // Root may open a terminal that another program has for itself alone.
    int isTaken = 0;
    if (::ioctl(port, TIOCGEXCL, &isTaken) == 0 && isTaken != 0) {
        return systemError(EBUSY);
    }
#endif
    if (::flock(port, LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? systemError(EBUSY) : lastSystemError();
    }
    if (::ioctl(port, TIOCEXCL) != 0) {
        return lastSystemError();
    }
    return {};
}

void releasePort(std::intptr_t handle)
{
    const int port = static_cast<int>(handle);
    ::ioctl(port, TIOCNXCL);
    ::flock(port, LOCK_UN);
}

bool isInUse(const SystemError& error)
{
    return error.number == EBUSY;
}

std::vector<PortHolder> portHolders(const fs::path& device)
{
    std::vector<PortHolder> holders;
    std::error_code error;
    const fs::path place = fs::canonical(device, error);
    if (error) {
        return holders;
    }
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end; entry.increment(error)) {
        const std::optional<long> process = processNumber(entry->path());
        if (process && *process != ::getpid() && holds(entry->path(), place)) {
            holders.push_back({*process, firstLineOf(entry->path() / "comm")});
        }
    }
    std::ranges::sort(holders, {}, &PortHolder::process);
    return holders;
}

bool mayReadAndWrite(const fs::path& device)
{
    return ::access(device.c_str(), R_OK | W_OK) == 0;
}

bool isDevice(const fs::path& device)
{
    std::error_code unknown;
    return fs::is_character_file(device, unknown);
}

} // namespace platform
