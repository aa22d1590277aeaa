#pragma once

#include "tables/ParamRow.h"

#include <QByteArray>
#include <QByteArrayList>

#include <span>
#include <string>
#include <utility>

// Rows as tests write and compare them: "address|value|notes", one text a row.

inline QByteArrayList rowTexts(std::span<const tables::ParamRow> rows)
{
    QByteArrayList texts;
    for (const tables::ParamRow& row : rows) {
        texts << QByteArray::fromStdString(row.changed + row.address + '|' + row.value + '|' + row.notes);
    }
    return texts;
}

inline tables::ParamRow dataRow(std::string address, std::string value, std::string notes)
{
    return {.changed = {}, .address = std::move(address), .value = std::move(value), .notes = std::move(notes)};
}
