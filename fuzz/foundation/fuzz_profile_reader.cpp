// The profile reader over arbitrary file bytes: every reader stays within its buffer, and a
// write keeps the bytes of every line it did not touch.

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/portable/portable_profile_file.h"
#include "platform/posix/posix_file_system.h"
#include "ports/port.h"

namespace {

std::size_t BufferUse(const std::vector<std::wstring>& strings) {
    std::size_t used = 1;
    for (const auto& s : strings)
        used += s.size() + 1;
    return used;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static PosixFileSystem disk;
    static ScopedPort<FileSystem> port(disk);
    static const std::string file =
        std::string(std::getenv("TMPDIR") ? std::getenv("TMPDIR") : "/tmp") + "/fuzz-profile-" +
        std::to_string(::getpid()) + ".ini";
    static const std::wstring path(file.begin(), file.end());
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(size));

    PortableProfileFile ini;
    const auto names = ini.GetSectionNames(path, 200);
    if (BufferUse(names) > 200)
        std::abort();
    for (const std::wstring& name : names) {
        const auto lines = ini.GetSection(path, name, 300);
        if (BufferUse(lines) > 300)
            std::abort();
        for (const std::wstring& line : lines) {
            const std::wstring key = line.substr(0, line.find(L'='));
            if (ini.GetString(path, name, key, L"", 17).size() > 16)
                std::abort();
            ini.GetInt(path, name, key, 0);
        }
    }

    // A brand-new section goes at the end: everything before it stays byte for byte.
    if (bytes.find("fuzz") != std::string::npos)
        return 0;  // the section might exist already
    if (!ini.WriteString(path, L"\x01fuzz", L"k", std::wstring(L"v")))
        return 0;
    std::ifstream in(file, std::ios::binary);
    const std::string after((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const std::size_t kept = size >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE' ? 0 : size;
    std::string expected = bytes.substr(0, kept);
    if (kept > 0 && expected.back() != '\n')
        expected += '\n';
    if (kept > 0 && after.compare(0, expected.size(), expected) != 0)
        std::abort();
    return 0;
}
