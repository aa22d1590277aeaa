#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QString>

// What must pass the port, as the reader's log writes it: each command with the one line feed behind it.
namespace systemtest {

[[nodiscard]] QByteArrayList identification();                     // 5 commands of every open
[[nodiscard]] QByteArrayList retrieve_CFG();                       // with its identification: 32
[[nodiscard]] QByteArrayList retrieve_KB();                        // 154
[[nodiscard]] QByteArrayList update_CFG(const QByteArray& memory); // 31; values as in the memory
[[nodiscard]] QByteArrayList update_KB(const QByteArray& memory);  // 154

// A reader's memory in which every parameter differs from its neighbours and nearly every one from its default: one
// "aaa=vv" a line.
[[nodiscard]] QByteArray strangeMemory();
// The value of an address in such a memory; empty when it has none.
[[nodiscard]] QByteArray valueIn(const QByteArray& memory, const QByteArray& address);

// The Hex column of a table whose rows hold what the memory holds, joined by blanks.
[[nodiscard]] QString values_CFG(const QByteArray& memory);
[[nodiscard]] QString values_KB(const QByteArray& memory);

// The factory defaults as a memory.
[[nodiscard]] QByteArray factoryMemory();

} // namespace systemtest
