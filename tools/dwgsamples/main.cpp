// dwgsamples: makes a folder of small drawing files of several releases, each with a stored
// preview picture drawn here, for the demo and for trying dwgthumb without real drawings.
//
//   dwgsamples FOLDER

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <vector>

#include "tools/dwgsamples/dwg_sample_writer.h"
#include "tools/dwgthumb/png_codec.h"

namespace fs = std::filesystem;

namespace {

// The few colours a plan is drawn in; an 8-bit picture uses them as its first palette entries.
const win::COLORREF kInk[] = {0xFFFFFF, 0x000000, 0x0000FF, 0x00A000, 0xFF0000, 0x00C0C0};

struct Picture {
    int width;
    int height;
    std::vector<int> ink;  // index into kInk per pixel
};

// A small floor plan: walls, a door swing, a dimension line; `variant` moves things about.
Picture DrawPlan(int width, int height, int variant) {
    Picture p{width, height, std::vector<int>(static_cast<std::size_t>(width) * height, 0)};
    auto dot = [&p](int x, int y, int ink) {
        if (x >= 0 && y >= 0 && x < p.width && y < p.height)
            p.ink[static_cast<std::size_t>(y) * p.width + x] = ink;
    };
    auto line = [&dot](int x0, int y0, int x1, int y1, int ink) {
        const int steps = std::max(std::abs(x1 - x0), std::abs(y1 - y0));
        for (int i = 0; i <= steps; ++i)
            dot(x0 + (x1 - x0) * i / std::max(steps, 1), y0 + (y1 - y0) * i / std::max(steps, 1),
                ink);
    };
    const int m = 6;
    const int w = width - 2 * m;
    const int h = height - 2 * m - 8;
    line(m, m, m + w, m, 1);
    line(m + w, m, m + w, m + h, 1);
    line(m + w, m + h, m, m + h, 1);
    line(m, m + h, m, m, 1);
    const int split = m + w * (2 + variant % 3) / 6;
    line(split, m, split, m + h - h / 3, 1);
    const int radius = h / 3;
    for (int a = 0; a <= 90; ++a) {
        const double t = a * 3.14159265358979 / 180.0;
        dot(split + static_cast<int>(radius * std::sin(t)),
            m + h - static_cast<int>(radius * std::cos(t)), 2);
    }
    line(split, m + h, split + radius, m + h, 2);
    line(m, m + h + 5, m + w, m + h + 5, 3);
    line(m, m + h + 2, m, m + h + 8, 3);
    line(m + w, m + h + 2, m + w, m + h + 8, 3);
    const int cx = split + (m + w - split) / 2;
    const int cy = m + h / 2;
    for (int a = 0; a < 360; ++a) {
        const double t = a * 3.14159265358979 / 180.0;
        dot(cx + static_cast<int>(h / 5 * std::cos(t)), cy + static_cast<int>(h / 5 * std::sin(t)),
            4 + variant % 2);
    }
    return p;
}

std::string AsDib(const Picture& p, int bits) {
    DibSpec spec = SizedDib(p.width, p.height, bits);
    const std::size_t rowBytes = (static_cast<std::size_t>(p.width) * bits + 31) / 32 * 4;
    for (std::size_t i = 0; i < std::size(kInk) && bits == 8; ++i)
        spec.palette.push_back(kInk[i]);
    std::string dib = MakeDib(spec);
    const std::size_t pixels = dib.size() - rowBytes * p.height;
    for (int y = 0; y < p.height; ++y) {
        char* row = dib.data() + pixels + static_cast<std::size_t>(p.height - 1 - y) * rowBytes;
        for (int x = 0; x < p.width; ++x) {
            const int ink = p.ink[static_cast<std::size_t>(y) * p.width + x];
            if (bits == 8) {
                row[x] = static_cast<char>(ink);
            } else {
                row[3 * x] = static_cast<char>(win::BlueOf(kInk[ink]));
                row[3 * x + 1] = static_cast<char>(win::GreenOf(kInk[ink]));
                row[3 * x + 2] = static_cast<char>(win::RedOf(kInk[ink]));
            }
        }
    }
    return dib;
}

std::string AsPng(const Picture& p) {
    std::vector<std::uint8_t> rgb;
    for (int ink : p.ink) {
        rgb.push_back(win::RedOf(kInk[ink]));
        rgb.push_back(win::GreenOf(kInk[ink]));
        rgb.push_back(win::BlueOf(kInk[ink]));
    }
    return EncodePng(rgb, p.width, p.height);
}

struct Sample {
    const char* file;
    const char* version;
    std::uint8_t writer;
    int kind;  // 8 or 24: a DIB of that depth; 6: a PNG record; 0: no preview block
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: dwgsamples FOLDER\n";
        return 2;
    }
    const fs::path folder = argv[1];
    std::error_code code;
    fs::create_directories(folder, code);
    const Sample samples[] = {
        {"release11_site.dwg", "AC1009", 0, 0},   {"release13_office.dwg", "AC1012", 0, 8},
        {"release14_house.dwg", "AC1014", 0, 8},  {"r2000_garage.dwg", "AC1015", 0, 8},
        {"r2004_workshop.dwg", "AC1018", 25, 24}, {"r2007_clinic.dwg", "AC1021", 27, 8},
        {"r2010_school.dwg", "AC1024", 0, 8},     {"r2013_library.dwg", "AC1027", 0, 6},
        {"r2018_station.dwg", "AC1032", 0, 6},
    };
    int variant = 0;
    for (const Sample& sample : samples) {
        const Picture picture = DrawPlan(180, 110, variant++);
        DwgSampleSpec spec;
        spec.version = sample.version;
        spec.writerByte = sample.writer;
        spec.bodyBytes = 4096;
        spec.withPreview = sample.kind != 0;
        spec.records.emplace_back(1, std::string(80, '\0'));  // header data
        if (sample.kind == 6)
            spec.records.emplace_back(6, AsPng(picture));
        else if (sample.kind != 0)
            spec.records.emplace_back(2, AsDib(picture, sample.kind));
        std::ofstream out(folder / sample.file, std::ios::binary | std::ios::trunc);
        const std::string bytes = MakeDwg(spec);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) {
            std::cerr << "dwgsamples: cannot write " << (folder / sample.file).string() << "\n";
            return 1;
        }
    }
    std::cout << "wrote " << std::size(samples) << " sample drawings to " << folder.string()
              << "\n";
    return 0;
}
