#include "tables/ui/SendQuestion.h"

#include <utility>

namespace tables {

bool confirmSend(platform::MessageBoxes& boxes, std::string question)
{
    const platform::MessageBox box{.text = std::move(question),
                                   .title = "Send Single Setting",
                                   .icon = platform::BoxIcon::Question,
                                   .buttons = platform::BoxButtons::YesNo,
                                   .defaultButton = platform::BoxAnswer::No};
    return boxes.show(box) == platform::BoxAnswer::Yes;
}

} // namespace tables
