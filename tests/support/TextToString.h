#pragma once

#include <QTest>

#include <string>
#include <string_view>
#include <vector>

// Lets a failed QCOMPARE show the program's byte texts; without these it only says that the values differ.
namespace QTest {

template <>
inline char* toString(const std::string_view& text)
{
    return toString(QByteArray(text.data(), static_cast<qsizetype>(text.size())));
}

template <>
inline char* toString(const std::string& text)
{
    return toString(std::string_view(text));
}

template <>
inline char* toString(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts) {
        joined += (joined.empty() ? "" : " | ") + text;
    }
    return qstrdup(joined.c_str());
}

} // namespace QTest
