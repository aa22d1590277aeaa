#include "simulator/posix/PostedValues.h"

#include "simulator/posix/SetupError.h"

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <system_error>

namespace simulator {

namespace fs = std::filesystem;

fs::path PostedValues::file(const fs::path& folder, const std::string& portEntry)
{
    return folder / ("." + portEntry + ".values");
}

PostedValues::PostedValues(const fs::path& folder, const std::string& portEntry, const ParameterMemory& memory)
    : m_file(file(folder, portEntry))
    , m_memory(memory)
    , m_posted(memory.changes())
{
    post();
}

PostedValues::~PostedValues()
{
    std::error_code gone;
    fs::remove(m_file, gone);
}

void PostedValues::update()
{
    if (m_memory.changes() != m_posted) {
        m_posted = m_memory.changes();
        post();
    }
}

// Whoever reads meanwhile gets the old values or the new ones, never half of them.
void PostedValues::post()
{
    const fs::path next = m_file.string() + "." + std::to_string(::getpid());
    std::ofstream stream(next, std::ios::binary);
    stream << m_memory.text() << std::flush;
    if (!stream || std::rename(next.c_str(), m_file.c_str()) != 0) {
        const SetupError error = systemError("write " + m_file.string());
        std::error_code gone;
        fs::remove(next, gone);
        throw error;
    }
}

} // namespace simulator
