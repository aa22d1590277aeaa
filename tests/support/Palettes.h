#pragma once

#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

#include <array>
#include <memory>

// The colours that a user may have chosen for the whole desktop.
namespace testsupport {

[[nodiscard]] inline QPalette lightPalette()
{
    const std::unique_ptr<QStyle> style(QStyleFactory::create(QStringLiteral("fusion")));
    return style->standardPalette();
}

[[nodiscard]] inline QPalette darkPalette()
{
    QPalette palette(QColor(0x35, 0x35, 0x35), QColor(0x2B, 0x2B, 0x2B));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x2B, 0x2B, 0x2B));
    palette.setColor(QPalette::Highlight, QColor(0x2A, 0x82, 0xDA));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

[[nodiscard]] inline QPalette contrastPalette()
{
    QPalette palette(Qt::black);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, Qt::white);
    }
    for (const auto role :
         {QPalette::Window, QPalette::Base, QPalette::AlternateBase, QPalette::Button, QPalette::ToolTipBase}) {
        palette.setColor(role, Qt::black);
    }
    palette.setColor(QPalette::Highlight, QColor(0x1A, 0xEB, 0xFF));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::PlaceholderText, QColor(0xC0, 0xC0, 0xC0));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(0x3F, 0xF2, 0x3F));
    }
    return palette;
}

struct NamedPalette
{
    const char* name;
    QPalette (*make)();
};

inline constexpr std::array<NamedPalette, 3> kPalettes = {
    {{"light", lightPalette}, {"dark", darkPalette}, {"contrast", contrastPalette}}};

} // namespace testsupport
