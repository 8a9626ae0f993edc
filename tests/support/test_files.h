#pragma once
// What tests need of the real disk: a private scratch folder and the sample files kept beside
// the repository.

#include <filesystem>
#include <string>

// A new empty folder under the system's temporary folder, removed with everything in it when
// the object goes.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    // The folder's path as a wide string with a trailing separator.
    std::wstring Folder() const;
    // A path inside the folder.
    std::wstring File(const std::wstring& name) const;
    // Writes bytes to a file inside the folder and returns its path.
    std::wstring Write(const std::wstring& name, const std::string& bytes) const;

private:
    std::filesystem::path m_path;
};

std::string ReadBytes(const std::filesystem::path& path);

// The folder of sample files (drawings under "dwg"), or an empty path when it is not there.
// Tests that need it skip with GTEST_SKIP() when it is empty.
std::filesystem::path SampleDataFolder();

// A file beside the running test program, where pictures are saved for a person to look at.
std::filesystem::path BesideProgram(const std::filesystem::path& name);
