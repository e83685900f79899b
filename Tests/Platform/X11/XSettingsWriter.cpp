#include "XSettingsWriter.h"

namespace platform::x11 {

namespace {

class Writer {
public:
    explicit Writer(bool isMostFirst)
        : isMostFirst(isMostFirst) {}

    void number(std::uint32_t value, unsigned width) {
        for (unsigned index = 0; index < width; ++index) {
            const unsigned place = isMostFirst ? width - 1 - index : index;
            bytes += static_cast<char>(value >> 8 * place);
        }
    }

    void text(const std::string& letters) {
        bytes += letters;
        bytes.append((4 - letters.size() % 4) % 4, '\xAA');
    }

    void head(std::uint32_t kind, const std::string& name) {
        number(kind, 1);
        number(0xBB, 1);
        number(static_cast<std::uint32_t>(name.size()), 2);
        text(name);
        number(0xCCDD, 4);
    }

    std::string bytes;

private:
    bool isMostFirst;
};

} // namespace

std::string writeXSettings(const XSettingsList& settings, bool isMostFirst) {
    Writer writer(isMostFirst);
    writer.number(isMostFirst ? 1 : 0, 1);
    writer.number(0, 3);
    writer.number(7, 4);
    writer.number(static_cast<std::uint32_t>(2 * settings.size()), 4);
    for (const auto& [name, value] : settings) {
        if (const auto* number = std::get_if<std::int32_t>(&value)) {
            writer.head(0, name);
            writer.number(static_cast<std::uint32_t>(*number), 4);
        } else {
            const std::string& text = std::get<std::string>(value);
            writer.head(1, name);
            writer.number(static_cast<std::uint32_t>(text.size()), 4);
            writer.text(text);
        }
        writer.head(2, name + "Color");
        writer.number(0x1234, 4);
        writer.number(0xFFFF, 4);
    }
    return writer.bytes;
}

} // namespace platform::x11
