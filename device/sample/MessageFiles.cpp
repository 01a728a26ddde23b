#include "device/sample/MessageFiles.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>

#include "device/picture/Jpeg.h"

namespace device::sample {

namespace {

using Colour = std::array<int, 3>;

std::string painted(int width, int height, const std::function<Colour(int x, int y)> &colourAt) {
    picture::Pixels pixels{width, height, {}};
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (const int part : colourAt(x, y))
                pixels.rgb.push_back(static_cast<std::uint8_t>(part));
    return picture::encodedAsJpeg(pixels, 80).value_or("");
}

// A small picture of ours, encoded once: encoders for HEIC are rarely installed.
constexpr std::string_view kSail =
    "0000001c6674797068656963000000006d696631686569636d696166000001426d657461000000000000002168646c72000000000000000070696374"
    "000000000000000000000000000000000e7069746d00000000000100000022696c6f6300000000444000010001000000000166000100000000000001"
    "8b0000002369696e6600000000000100000015696e666502000000000100006876633100000000c269707270000000a46970636f0000007868766343"
    "0103700000000000000000001ef000fcfdf8f800000f03200001001840010c01ffff03700000030090000003000003001eba0240210001002b420101"
    "03700000030090000003000003001ea014207965ba924a6b9b81010302000003000200000300021022000100074401c172b062400000001469737065"
    "00000000000000a000000078000000107069786900000000030808080000001669706d610000000000000001000103810283000001936d6461740000"
    "01872801af3508f8805dbf2fb45e155139facb431575fe8339fa0d050b8608b60cb60251fb87d33c77c106c8f1db8e46d7f8b188f8ac34e7d7075758"
    "ffe2658c51620cd23e437e98da3df57784424894854638e27d733268a7bade3ecad5c51d567255b2f1eccaf6564f0ba2a552ab177fb9ec4118fd97e8"
    "59e34d3447732deaf60c51ff548980d254175c2f189cdd46c21fd5f65f0033df0ec1d4b96f813ba297f7d1c7f31048bc648abf0f1baea96fc1aa7ba8"
    "280f26e699b257f2ff2864c7b181b0762ea48afe9d64a7200e6ccfae1ec1a69d70f08febdcf60f3059726ad07489c5cd3e2abd78eeb57662e3a8e671"
    "017e3afdc7158df013047d819c8863f75450d16e1957457f3192839e10df393cf246bf323f3977e93b238f178d6590c80ba3b3c264507a2b35b20d83"
    "8a68ecc000119b79bc2bdbb732dfbe7906895166b489d362d99faca3a5e37d19c634408ccfb0e24fa11900ab3ce1bdf62f07c884ca86032183076fe4"
    "f59bee31859c78604ab44f38e100d21a3ef2e08000000301af8c185a9e52900bc8";

std::string fromHex(std::string_view digits) {
    const auto value = [](char c) { return c <= '9' ? c - '0' : c - 'a' + 10; };
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2)
        bytes += static_cast<char>(value(digits[i]) * 16 + value(digits[i + 1]));
    return bytes;
}

std::string littleEndian(std::uint32_t value, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value & 0xFF);
    return text;
}

}  // namespace

std::string harbourPicture() {
    return painted(320, 240, [](int x, int y) -> Colour {
        const bool isMast = x >= 158 && x < 162 && y > 60 && y < 170, isHull = y >= 160 && y < 185 && x > 90 + (y - 160) && x < 230 - (y - 160);
        const bool isSail = y > 66 && y < 150 && x > 164 && x - 164 < (y - 66) * 2 / 3;
        if (isMast || isHull)
            return {96, 62, 44};
        if (isSail)
            return {250, 246, 236};
        return y < 150 ? Colour{150 + y / 4, 200, 235} : Colour{40, 110 + (x + y) % 12, 150};
    });
}

std::string longReceipt() {
    return painted(160, 1600, [](int x, int y) -> Colour {
        const bool isInk = y % 40 > 12 && y % 40 < 20 && x > 16 && x < 140 - (y / 40 * 37) % 80;
        return isInk ? Colour{60, 60, 60} : Colour{252, 250, 240};
    });
}

std::string sailPicture() { return fromHex(kSail); }

std::string chime() {
    constexpr int kRate = 8000, kSamples = kRate * 3 / 2;
    std::string sound;
    for (int i = 0; i < kSamples; ++i) {
        const double time = static_cast<double>(i) / kRate, fade = std::exp(-3 * time);
        const double wave = std::sin(2 * std::numbers::pi * 660 * time) + 0.5 * std::sin(2 * std::numbers::pi * 990 * time);
        sound += static_cast<char>(static_cast<std::uint8_t>(128 + 70 * fade * wave));
    }
    return "RIFF" + littleEndian(36 + kSamples, 4) + "WAVEfmt " + littleEndian(16, 4) + littleEndian(1, 2) + littleEndian(1, 2) + littleEndian(kRate, 4) +
           littleEndian(kRate, 4) + littleEndian(1, 2) + littleEndian(8, 2) + "data" + littleEndian(kSamples, 4) + sound;
}

std::string timetable() {
    const std::string page = "BT /F1 24 Tf 72 760 Td (Ferry to Naxos) Tj /F1 14 Tf 0 -40 Td (Piraeus 07:30 - Paros 11:45 - Naxos 12:40) Tj ET";
    const std::string objects[] = {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Contents 4 0 R /Resources << /Font << /F1 5 0 R >> >> >>",
        "<< /Length " + std::to_string(page.size()) + " >>\nstream\n" + page + "\nendstream",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
    };
    std::string pdf = "%PDF-1.4\n", places;
    int number = 0;
    for (const std::string &object : objects) {
        const std::string place = std::to_string(pdf.size());
        places += std::string(10 - place.size(), '0') + place + " 00000 n \n";
        pdf += std::to_string(++number) + " 0 obj\n" + object + "\nendobj\n";
    }
    const std::string table = std::to_string(pdf.size());
    return pdf + "xref\n0 6\n0000000000 65535 f \n" + places + "trailer\n<< /Size 6 /Root 1 0 R >>\nstartxref\n" + table + "\n%%EOF\n";
}

std::string addressCard() {
    return "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Papadaki;Eleni;;;\r\nFN:Eleni Papadaki\r\nORG:Naxos Sailing;\r\nTEL;type=CELL:+30 694 555 0101\r\n"
           "EMAIL:eleni@example.gr\r\nEND:VCARD\r\n";
}

}  // namespace device::sample
