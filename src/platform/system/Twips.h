#pragma once

/// The unit in which the places and sizes of windows are stored: a twentieth of a point, of which a device-independent
/// pixel has 15 at 96 to the inch.
inline constexpr int twipsPerPixel = 15;

constexpr int toPixels(int twips)
{
    return twips / twipsPerPixel;
}

constexpr int toTwips(int pixels)
{
    return pixels * twipsPerPixel;
}
