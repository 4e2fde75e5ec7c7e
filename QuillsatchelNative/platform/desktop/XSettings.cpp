#include "platform/desktop/XSettings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstring>

namespace
{

/// Reads values in order. `isIntact` becomes false once data is missing.
class Reader
{
public:
    explicit Reader(std::string_view data)
        : m_data(data)
    {
    }

    bool isIntact() const { return m_isIntact; }

    void setByteOrder(std::endian order) { m_isSwapped = order != std::endian::native; }

    std::string_view bytes(std::size_t count)
    {
        m_isIntact = m_isIntact && count <= m_data.size();
        const auto taken = m_data.substr(0, m_isIntact ? count : 0);
        m_data.remove_prefix(taken.size());
        return taken;
    }

    /// Padded to a multiple of four bytes.
    std::string_view text(std::size_t length)
    {
        const auto taken = bytes(length);
        bytes((4 - length % 4) % 4);
        return taken;
    }

    template <typename Number>
    Number number()
    {
        std::array<char, sizeof(Number)> copy {};
        std::ranges::copy(bytes(sizeof(Number)), copy.begin());
        if (m_isSwapped)
            std::ranges::reverse(copy);
        return std::bit_cast<Number>(copy);
    }

private:
    std::string_view m_data;
    bool m_isIntact = true;
    bool m_isSwapped = false;
};

enum class Type : std::uint8_t {
    integer,
    string,
    color
};

void readSetting(Reader &reader, std::map<std::string, std::int32_t> &integers)
{
    const auto type = Type(reader.number<std::uint8_t>());
    reader.bytes(1);
    const std::string name(reader.text(reader.number<std::uint16_t>()));
    reader.number<std::uint32_t>(); // serial number of the last change
    if (type == Type::string) {
        reader.text(reader.number<std::uint32_t>());
    } else if (type == Type::color) {
        reader.bytes(8);
    } else if (type != Type::integer) {
        reader.bytes(std::string_view::npos); // stop: an unknown type has an unknown size
    } else if (const auto value = reader.number<std::int32_t>(); reader.isIntact()) {
        integers[name] = value;
    }
}

} // namespace

std::map<std::string, std::int32_t> XSettings::integersIn(std::string_view data)
{
    Reader reader(data);
    reader.setByteOrder(reader.number<std::uint8_t>() == 0 ? std::endian::little
                                                           : std::endian::big);
    reader.bytes(3);
    reader.number<std::uint32_t>(); // serial number of all settings
    auto count = reader.number<std::uint32_t>();
    std::map<std::string, std::int32_t> integers;
    for (; count > 0 && reader.isIntact(); --count)
        readSetting(reader, integers);
    return integers;
}
