#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace device {

// The driver's virtual port as the user sets it: its name as text, and the number on a scroll bar. Lives for the whole
// run, whether or not the options are open, because detection and the settings file need it too.
class VirtualPort final
{
public:
    static constexpr int kLowest = 1;
    static constexpr int kHighest = 256;

    enum class Part { Text, Scroll };

    // Told of every change, so that an open dialog can follow.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void virtualPortChanged(Part part) = 0;
    };

    [[nodiscard]] const std::string& portText() const { return m_text; }
    void setPortText(std::string_view text)
    {
        m_text = text;
        changed(Part::Text);
    }

    // 1 to 256; a number beyond goes to the nearest end. The name stays as it is.
    [[nodiscard]] int portScroll() const { return m_scroll; }
    void setPortScroll(int number)
    {
        m_scroll = std::clamp(number, kLowest, kHighest);
        changed(Part::Scroll);
    }

    // At most one, which outlives this object or is taken away with nullptr.
    void setListener(Listener* listener) { m_listener = listener; }

private:
    void changed(Part part)
    {
        if (m_listener != nullptr) {
            m_listener->virtualPortChanged(part);
        }
    }

    std::string m_text = "COM5";
    int m_scroll = 5;
    Listener* m_listener = nullptr;
};

} // namespace device
