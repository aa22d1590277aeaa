#include "cli/Commands.h"
#include "cli/LayoutList.h"
#include "cli/Reader.h"
#include "cli/Utf8.h"

#include <nlohmann/json.hpp>

namespace cli {

namespace {

Json orNull(const std::optional<std::string>& text)
{
    return text ? Json(toUtf8(*text)) : Json();
}

std::string orUnknown(const std::optional<std::string>& text)
{
    return text ? toHarmlessUtf8(*text) : "unknown";
}

} // namespace

Exit info(const Arguments& arguments, Console& console)
{
    Reader reader(arguments, console);
    reader.open();
    const Identification found = identify(reader.link());
    const bool isComplete = found.driver && found.firmware && found.device && found.layoutId;
    const Exit exit = isComplete ? Exit::Done : Exit::NoReply;
    const std::string layout = found.layoutId ? layoutOf(*found.layoutId).name : std::string();

    console.print("Port:            COM" + std::to_string(reader.link().port()));
    console.print("Driver:          " + orUnknown(found.driver));
    console.print("Firmware:        " + orUnknown(found.firmware));
    console.print("Identification:  " + orUnknown(found.device));
    console.print("Keyboard layout: " +
                  (found.layoutId ? *found.layoutId + (layout.empty() ? "" : " " + toUtf8(layout)) : "unknown"));
    Json json = document(arguments, exit);
    json["port"] = "COM" + std::to_string(reader.link().port());
    json["driver"] = orNull(found.driver);
    json["firmware"] = orNull(found.firmware);
    json["identification"] = orNull(found.device);
    json["layout"] = {{"id", orNull(found.layoutId)}, {"name", layout.empty() ? Json() : Json(toUtf8(layout))}};
    console.answer(json);
    if (!isComplete) {
        console.complain("teslin: not every question was answered");
    }
    return exit;
}

} // namespace cli
