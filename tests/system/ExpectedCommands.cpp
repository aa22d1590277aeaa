#include "tests/system/ExpectedCommands.h"

#include "tables/Parameters.h"

#include <QList>
#include <QStringList>

namespace systemtest {

namespace {

constexpr int kFirstOfKeyboard = 0x080;
constexpr int kFirstPair = 0x081;
constexpr int kLastOfKeyboard = 0x114;

QByteArray addressText(int address)
{
    return QByteArray::number(address, 16).toUpper().rightJustified(3, '0');
}

QList<int> addresses_CFG()
{
    QList<int> addresses = {0x001};
    for (int address = 0x013; address <= 0x02D; ++address) {
        if (address != 0x02B) {
            addresses.append(address);
        }
    }
    return addresses;
}

QList<int> addresses_KB()
{
    QList<int> addresses;
    for (int address = kFirstOfKeyboard; address <= kLastOfKeyboard; ++address) {
        addresses.append(address);
    }
    return addresses;
}

QByteArray reading(int address)
{
    return "/rawxact WPV" + addressText(address) + "\\n";
}

QByteArray writing(int address, const QByteArray& memory)
{
    return "/rawsend WPW" + addressText(address) + '=' + valueIn(memory, addressText(address)) + "\\n";
}

QByteArray setting(const QByteArray& address, const QByteArray& value)
{
    return address + '=' + value + '\n';
}

QByteArray bytes(std::string_view text)
{
    return {text.data(), static_cast<qsizetype>(text.size())};
}

} // namespace

QByteArrayList identification()
{
    return {"/ver\\n", "/get dev_version\\n", "/rawxact WCY\\n", "/rawxact WPV081\\n", "/rawxact WPV082\\n"};
}

QByteArrayList retrieve_CFG()
{
    QByteArrayList commands = identification();
    for (const int address : addresses_CFG()) {
        commands.append(reading(address));
    }
    return commands;
}

QByteArrayList retrieve_KB()
{
    QByteArrayList commands = identification();
    for (const int address : addresses_KB()) {
        commands.append(reading(address));
    }
    return commands;
}

QByteArrayList update_CFG(const QByteArray& memory)
{
    QByteArrayList commands = identification();
    for (const int address : addresses_CFG()) {
        if (address != 0x001) {
            commands.append(writing(address, memory));
        }
    }
    return commands;
}

QByteArrayList update_KB(const QByteArray& memory)
{
    QByteArrayList commands = identification();
    for (const int address : addresses_KB()) {
        commands.append(writing(address, memory));
    }
    return commands;
}

QByteArray strangeMemory()
{
    QByteArray memory;
    for (const int address : addresses_CFG() + addresses_KB()) {
        const int value = (address * 37 + 0x5B) % 0x100;
        memory += setting(addressText(address), QByteArray::number(value, 16).toUpper().rightJustified(2, '0'));
    }
    return memory;
}

QByteArray valueIn(const QByteArray& memory, const QByteArray& address)
{
    for (const QByteArray& line : memory.split('\n')) {
        if (line.startsWith(address + '=')) {
            return line.mid(address.size() + 1);
        }
    }
    return {};
}

QString values_CFG(const QByteArray& memory)
{
    QByteArrayList values;
    for (const int address : addresses_CFG()) {
        values.append(valueIn(memory, addressText(address)));
    }
    return QString::fromLatin1(values.join(' '));
}

QString values_KB(const QByteArray& memory)
{
    QByteArrayList values = {valueIn(memory, addressText(kFirstOfKeyboard))};
    for (int address = kFirstPair; address < kLastOfKeyboard; address += 2) {
        values.append(valueIn(memory, addressText(address)) + '-' + valueIn(memory, addressText(address + 1)));
    }
    return QString::fromLatin1(values.join(' '));
}

QByteArray factoryMemory()
{
    QByteArray memory;
    for (const tables::Parameter& row : tables::parameters_CFG()) {
        memory += setting(bytes(row.address), bytes(row.value));
    }
    for (const tables::Parameter& row : tables::parameters_KB()) {
        const QByteArrayList addresses = bytes(row.address).split('-');
        const QByteArrayList values = bytes(row.value).split('-');
        for (qsizetype i = 0; i < addresses.size(); ++i) {
            memory += setting(addresses[i], values.value(i));
        }
    }
    return memory;
}

} // namespace systemtest
