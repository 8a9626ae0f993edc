#include "support/test_files.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#ifdef _WIN32
#include <windows.h>
#endif

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
    static std::atomic<unsigned> counter{0};
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        fs::path candidate = fs::temp_directory_path() /
                             ("tabrow-test-" + std::to_string(random()) + "-" +
                              std::to_string(counter++));
        if (fs::create_directory(candidate)) {
            m_path = candidate;
            return;
        }
    }
    throw std::runtime_error("cannot create a scratch folder");
}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    // Read-only entries made by a test must not survive it.
    // Stepping with an error code: a step that fails (a path too long for the platform) must not
    // throw out of a destructor.
    for (fs::recursive_directory_iterator it(m_path, ignored), end; it != end;
         it.increment(ignored)) {
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
    }
    fs::remove_all(m_path, ignored);
}

std::wstring ScratchFolder::Folder() const {
    std::wstring folder = m_path.wstring();
    folder.push_back(static_cast<wchar_t>(fs::path::preferred_separator));
    return folder;
}

std::wstring ScratchFolder::File(const std::wstring& name) const { return Folder() + name; }

std::wstring ScratchFolder::Write(const std::wstring& name, const std::string& bytes) const {
    const fs::path path = m_path / name;
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return path.wstring();
}

std::string ReadBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return bytes.str();
}

fs::path SampleDataFolder() {
    const char* configured = std::getenv("TABROW_SAMPLE_DATA");
    if (configured == nullptr || *configured == '\0') return {};
    std::error_code error;
    const fs::path folder(configured);
    if (!fs::is_directory(folder, error)) return {};
    return folder;
}

fs::path BesideProgram(const fs::path& name) {
#ifdef _WIN32
    wchar_t path[MAX_PATH] = {};
    ::GetModuleFileNameW(nullptr, path, MAX_PATH);
    const fs::path program(path);
#else
    const fs::path program = fs::read_symlink("/proc/self/exe");
#endif
    return program.parent_path() / name;
}
