#pragma once

#include "simulator/ParameterMemory.h"

#include <filesystem>
#include <string>

namespace simulator {

// The parameter values of a running reader, for whoever types its cards: a hidden file in the folder of DOS names,
// beside the entry of the port. It is replaced whole at each change and goes with this object.
class PostedValues final
{
public:
    // Posts at once; throws SetupError when that is not possible.
    PostedValues(const std::filesystem::path& folder, const std::string& portEntry, const ParameterMemory& memory);
    ~PostedValues();
    PostedValues(const PostedValues&) = delete;
    PostedValues& operator=(const PostedValues&) = delete;

    // Posts the values if they have changed since the last time; throws SetupError.
    void update();

    // The file of the reader on this port.
    [[nodiscard]] static std::filesystem::path file(const std::filesystem::path& folder, const std::string& portEntry);

private:
    void post();

    std::filesystem::path m_file;
    const ParameterMemory& m_memory;
    int m_posted; // the count of changes that the file knows
};

} // namespace simulator
