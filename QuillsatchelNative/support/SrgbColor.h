#pragma once

/// A colour in sRGB. Components and opacity are from 0 to 1.
struct SrgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    static constexpr SrgbColor white(double opacity = 1) { return { 1, 1, 1, opacity }; }

    static constexpr SrgbColor black(double opacity = 1) { return { 0, 0, 0, opacity }; }

    /// `hex` is 0xRRGGBB.
    static constexpr SrgbColor fromHex(unsigned hex)
    {
        return { ((hex >> 16) & 0xFF) / 255.0, ((hex >> 8) & 0xFF) / 255.0, (hex & 0xFF) / 255.0 };
    }

    constexpr SrgbColor withOpacity(double newOpacity) const
    {
        return { red, green, blue, newOpacity };
    }

    bool operator==(const SrgbColor &) const = default;
};
