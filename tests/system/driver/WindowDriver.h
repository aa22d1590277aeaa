#pragma once

#include <QByteArray>
#include <QObject>
#include <QSocketNotifier>

namespace windowdriver {

// Takes commands from the program's standard input, one a line, and answers each with one line on standard output.
// Commands that come while the program waits inside an operation or a message box are served all the same.
class WindowDriver final : public QObject
{
    Q_OBJECT

public:
    explicit WindowDriver(QObject* parent = nullptr);

private:
    void readCommands();
    void answer(const QByteArray& line);

    QSocketNotifier m_input;
    QByteArray m_unfinished;
};

} // namespace windowdriver
