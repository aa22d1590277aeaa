#include "platform/StartProgram.h"

namespace platform {

namespace {

class StartNothing final : public StartProgram
{
public:
    [[nodiscard]] std::string withVariables(std::string_view path) const override { return std::string(path); }
    [[nodiscard]] bool start(std::string_view /*path*/) override { return false; }
};

} // namespace

std::unique_ptr<StartProgram> makeStartProgram()
{
    return std::make_unique<StartNothing>();
}

} // namespace platform
