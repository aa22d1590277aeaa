#pragma once

namespace platform {

// While one lives, what goes to standard output and standard error arrives byte for byte, and a terminal shows it as
// UTF-8. Without, Windows puts a CR before each LF and takes the bytes for those of another code page.
class PlainStreams final
{
public:
    PlainStreams();
    ~PlainStreams();
    PlainStreams(const PlainStreams&) = delete;
    PlainStreams& operator=(const PlainStreams&) = delete;

private:
    unsigned m_codePage = 0; // of the terminal before; 0: it was left alone
};

} // namespace platform
