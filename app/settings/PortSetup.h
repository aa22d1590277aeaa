#pragma once

#include "device/LinkWindow.h"

#include <algorithm>
#include <functional>
#include <string>

namespace app {

// The driver's virtual port as the options hold it: its name as text and the number on the scroll bar. Lives for the
// whole run, whether or not the options are open, because detection and the settings file need it too.
class PortSetup final : public device::PortSettings
{
public:
    static constexpr int kLowest = 1;
    static constexpr int kHighest = 256;

    [[nodiscard]] std::string portText() const override { return m_text; }
    void setPortText(std::string_view text) override
    {
        m_text = text;
        changed();
    }

    [[nodiscard]] int portScroll() const { return m_scroll; }
    void setPortScroll(int number) override
    {
        m_scroll = std::clamp(number, kLowest, kHighest);
        changed();
    }

    // Called after each change, so that an open dialog can follow.
    void setOnChanged(std::function<void()> handler) { m_onChanged = std::move(handler); }

private:
    void changed()
    {
        if (m_onChanged) {
            m_onChanged();
        }
    }

    std::string m_text = "COM5";
    int m_scroll = 5;
    std::function<void()> m_onChanged;
};

} // namespace app
