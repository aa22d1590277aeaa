#pragma once

#include <QByteArray>
#include <QString>

// A program at the other end of a terminal, with nothing but the system's own calls.
class TerminalClient final
{
public:
    explicit TerminalClient(const QString& path); // isOpen() tells whether that went well
    ~TerminalClient();
    TerminalClient(const TerminalClient&) = delete;
    TerminalClient& operator=(const TerminalClient&) = delete;

    [[nodiscard]] bool isOpen() const { return m_fd >= 0; }
    [[nodiscard]] int descriptor() const { return m_fd; }
    void close();

    [[nodiscard]] bool send(const QByteArray& bytes) const; // true when all went out
    // Reads until that many bytes are there; less when the limit of the tests or a hang-up came first.
    [[nodiscard]] QByteArray read(qsizetype count) const;
    // Reads up to and with this byte.
    [[nodiscard]] QByteArray readTo(char end) const;
    [[nodiscard]] bool waitForHangUp() const;

private:
    [[nodiscard]] bool readByte(QByteArray& bytes) const;

    int m_fd;
};
