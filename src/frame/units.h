#pragma once

#include <QPoint>
#include <QRect>

namespace ZebSubCtl {

// Design places are given in twips; the screen has 15 twips to the pixel.
inline constexpr int TwipsPerPixel = 15;

constexpr int twipsToPixels(int twips)
{
    return twips / TwipsPerPixel;
}

constexpr int pixelsToTwips(int pixels)
{
    return pixels * TwipsPerPixel;
}

// A design place (left, top, width, height in twips) as a pixel rectangle.
constexpr QRect twipsRect(int left, int top, int width, int height)
{
    return QRect(twipsToPixels(left), twipsToPixels(top), twipsToPixels(width),
                 twipsToPixels(height));
}

// A design point (left, top in twips) as a pixel point.
constexpr QPoint twipsPoint(int left, int top)
{
    return QPoint(twipsToPixels(left), twipsToPixels(top));
}

}  // namespace ZebSubCtl
