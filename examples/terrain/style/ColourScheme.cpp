#include "style/ColourScheme.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

namespace terrain {

namespace {

/// A colour of a role in both schemes; of windows that can be used, be they active or not, and of what is
/// disabled.
struct RoleColours
{
    QPalette::ColorRole role;
    QRgb light;
    QRgb light_disabled;
    QRgb dark;
    QRgb dark_disabled;
};

// Dark paper, ink and links are those of the help pages. The dark highlight is brighter than usual, since the
// frame about what has the keyboard is made from it.
const RoleColours s_colours[] = {
    {QPalette::Window, 0xeff1f3, 0xeff1f3, 0x343b41, 0x343b41},
    {QPalette::WindowText, 0x1f262c, 0x858e96, 0xe2e6ea, 0x8a959e},
    {QPalette::Base, 0xffffff, 0xf6f7f8, 0x1f2428, 0x2b3136},
    {QPalette::AlternateBase, 0xf3f6f8, 0xeff1f3, 0x282e33, 0x30363b},
    {QPalette::Text, 0x1f262c, 0x858e96, 0xe2e6ea, 0x8a959e},
    {QPalette::PlaceholderText, 0x626b73, 0x8f979e, 0x9fa9b2, 0x838e97},
    {QPalette::Button, 0xeff1f3, 0xeff1f3, 0x3d454b, 0x373e44},
    {QPalette::ButtonText, 0x1f262c, 0x858e96, 0xe2e6ea, 0x8a959e},
    {QPalette::BrightText, 0xb3261e, 0x858e96, 0xffb4a9, 0x8a959e},
    {QPalette::ToolTipBase, 0xfffbe6, 0xfffbe6, 0x4b545c, 0x4b545c},
    {QPalette::ToolTipText, 0x2b2b2b, 0x858e96, 0xf2f4f6, 0xaab3bb},
    {QPalette::Link, 0x0b5cad, 0x858e96, 0x79b8ff, 0x8a959e},
    {QPalette::LinkVisited, 0x6a3d9a, 0x858e96, 0xc9aaf7, 0x8a959e},
    {QPalette::Highlight, 0x2a6fb8, 0xc6ccd1, 0x5aa5ee, 0x566069},
    {QPalette::HighlightedText, 0xffffff, 0x5f6870, 0x0d1216, 0xb4bcc3},
    {QPalette::Light, 0xffffff, 0xffffff, 0x59636b, 0x4b545b},
    {QPalette::Midlight, 0xf7f8f9, 0xf7f8f9, 0x4d565d, 0x424a51},
    {QPalette::Mid, 0xb9c0c6, 0xc6ccd1, 0x262b30, 0x2b3136},
    {QPalette::Dark, 0x98a1a9, 0xa9b1b8, 0x1b1f23, 0x22272b},
    {QPalette::Shadow, 0x68727a, 0x8f979e, 0x0c0e10, 0x121518},
};

} // namespace

ColourScheme::ColourScheme()
    : m_platform_is_dark(terrain::is_dark(QApplication::palette()))
    , m_is_dark(m_platform_is_dark)
{
    dress(m_platform_is_dark);
    m_desktop = watch_desktop_colours([this](DesktopColours desktop) { follow(desktop); });
}

ColourScheme::~ColourScheme() = default;

void ColourScheme::follow(DesktopColours desktop)
{
    const bool dark
        = desktop == DesktopColours::NoPreference ? m_platform_is_dark : desktop == DesktopColours::Dark;
    if (dark != m_is_dark) {
        dress(dark);
    }
}

void ColourScheme::dress(bool dark)
{
    m_is_dark = dark;
    const QPalette palette = scheme_palette(dark);
    QToolTip::setPalette(palette); // these have one of their own
    QApplication::setPalette(palette);
}

bool is_dark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette scheme_palette(bool dark)
{
    QPalette palette;
    for (const RoleColours& colours : s_colours) {
        palette.setColor(colours.role, QColor(dark ? colours.dark : colours.light));
        palette.setColor(
            QPalette::Disabled, colours.role, QColor(dark ? colours.dark_disabled : colours.light_disabled));
    }
    return palette;
}

} // namespace terrain
