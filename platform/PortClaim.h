#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// One reader, one program: whose a port is.
namespace platform {

struct PortHolder
{
    long process = 0;
    std::string name; // of the program, as the system shows it
};

// Claims a port that this process has just opened, by the system's own handle for it. An error when another program
// has claimed it; isInUse() tells that error from others. The claim ends with releasePort() or with the process.
[[nodiscard]] Result<void> claimPort(std::intptr_t handle);
void releasePort(std::intptr_t handle);

// True when the error says that another program uses the port.
[[nodiscard]] bool isInUse(const SystemError& error);

// The other programs that have a terminal device open, as far as the system tells this user. The program that plays
// the device, which is at the far end of a pseudo-terminal, is none of them.
[[nodiscard]] std::vector<PortHolder> portHolders(const std::filesystem::path& device);

// True when this user may read and write what is there. Opens nothing.
[[nodiscard]] bool mayReadAndWrite(const std::filesystem::path& device);

// True for a terminal or another device that lets bytes through one by one.
[[nodiscard]] bool isDevice(const std::filesystem::path& device);

} // namespace platform
