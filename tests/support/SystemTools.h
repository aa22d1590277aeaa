#pragma once

#include "platform/Registry.h"
#include "platform/StartProgram.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// A registry of the test's own.
class FakeRegistry final : public platform::Registry
{
public:
    // By "KEY|NAME", all under the root key of the machine.
    std::map<std::string, platform::RegistryValue> values;

    void setText(const std::string& keyAndName, const std::string& text)
    {
        values[keyAndName] = {.type = platform::kRegistryString, .bytes = text + '\0'};
    }

    [[nodiscard]] std::optional<platform::RegistryValue> read(std::uint32_t rootKey, std::string_view keyName,
                                                              std::string_view valueName) const override
    {
        const auto found = values.find(std::string(keyName) + "|" + std::string(valueName));
        return rootKey == platform::kLocalMachine && found != values.end() ? std::optional(found->second)
                                                                           : std::nullopt;
    }
};

// Writes down what it is to start, and starts nothing.
class RecordingStart final : public platform::StartProgram
{
public:
    bool starts = true;
    std::vector<std::string> started;
    std::map<std::string, std::string> variables; // by their names between percent signs

    [[nodiscard]] std::string withVariables(std::string_view path) const override
    {
        std::string text(path);
        for (const auto& [name, value] : variables) {
            if (const std::size_t at = text.find(name); at != std::string::npos) {
                text.replace(at, name.size(), value);
            }
        }
        return text;
    }

    [[nodiscard]] bool start(std::string_view path) override
    {
        started.emplace_back(path);
        return starts;
    }
};

} // namespace testsupport
