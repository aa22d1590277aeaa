#include "platform/windows/Windows.h"
#include "tests/system/driver/CommandInput.h"

#include <QObject>

#include <array>
#include <thread>

namespace windowdriver {

void listenToInput(QObject& context, std::function<void(const QByteArray&)> handler)
{
    // A pipe tells nobody that it has something, so somebody waits for it, for as long as the program lives.
    std::thread([&context, handler = std::move(handler)] {
        std::array<char, 4096> bytes{};
        for (bool isOpen = true; isOpen;) {
            DWORD count = 0;
            isOpen = ::ReadFile(::GetStdHandle(STD_INPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()),
                                &count, nullptr) != 0 &&
                     count > 0;
            const QByteArray read(bytes.data(), isOpen ? static_cast<qsizetype>(count) : 0);
            QMetaObject::invokeMethod(
                &context, [handler, read] { handler(read); }, Qt::QueuedConnection);
        }
    }).detach();
}

bool writeToOutput(const QByteArray& bytes)
{
    DWORD count = 0;
    return ::WriteFile(::GetStdHandle(STD_OUTPUT_HANDLE), bytes.constData(), static_cast<DWORD>(bytes.size()), &count,
                       nullptr) != 0 &&
           static_cast<qsizetype>(count) == bytes.size();
}

} // namespace windowdriver
