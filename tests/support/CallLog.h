#pragma once

#include <QByteArrayList>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace testsupport {

// What the doubles of one test were told, one line a call, in the order of the calls. All doubles write to one log, so
// that a test can compare the order of everything that happened.
using CallLog = std::vector<std::string>;

// Bytes as a line of text: everything that is not printable as an escape.
[[nodiscard]] inline std::string shown(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\n') {
            text += "\\n";
        } else if (c == '\r') {
            text += "\\r";
        } else if (code < 32 || code > 126) {
            char escape[8] = {};
            std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(code));
            text += escape;
        } else {
            text += c;
        }
    }
    return text;
}

// The log in the form in which QCOMPARE names the first line that differs.
[[nodiscard]] inline QByteArrayList lines(const CallLog& log)
{
    QByteArrayList list;
    for (const std::string& line : log) {
        list.append(QByteArray::fromStdString(line));
    }
    return list;
}

// The lines that begin with one of the texts.
[[nodiscard]] inline QByteArrayList linesWith(const CallLog& log, std::initializer_list<std::string_view> beginnings)
{
    QByteArrayList list;
    for (const std::string& line : log) {
        if (std::any_of(beginnings.begin(), beginnings.end(),
                        [&line](std::string_view beginning) { return line.starts_with(beginning); })) {
            list.append(QByteArray::fromStdString(line));
        }
    }
    return list;
}

// The lines that begin with none of the texts.
[[nodiscard]] inline QByteArrayList linesWithout(const CallLog& log, std::initializer_list<std::string_view> beginnings)
{
    QByteArrayList list;
    for (const std::string& line : log) {
        if (std::none_of(beginnings.begin(), beginnings.end(),
                         [&line](std::string_view beginning) { return line.starts_with(beginning); })) {
            list.append(QByteArray::fromStdString(line));
        }
    }
    return list;
}

} // namespace testsupport
