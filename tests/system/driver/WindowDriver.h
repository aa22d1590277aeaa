#pragma once

#include <QByteArray>
#include <QObject>

namespace windowdriver {

// Takes commands from the program's standard input, one a line, and answers each with one line on standard output.
// Commands that come while the program waits inside an operation or a message box are served all the same.
class WindowDriver final : public QObject
{
    Q_OBJECT

public:
    explicit WindowDriver(QObject* parent = nullptr);

private:
    void carryOutLines(const QByteArray& bytes);

    QByteArray m_unfinished;
    bool m_isHeard = true; // nobody drives any more once an answer is not taken; the program is the user's then
};

} // namespace windowdriver
