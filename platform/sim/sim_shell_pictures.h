#pragma once
// The simulated shell's pictures of files: the ones a test gives it, by path, as its extractors
// would make them. A file it has none for gets none, as a type without an extractor.

#include <map>
#include <string>
#include <vector>

#include "ports/shell_pictures.h"

class SimShellPictures : public ShellPictures {
public:
    void SetPicture(const std::wstring& path, std::vector<std::uint8_t> dib) {
        m_pictures[path] = std::move(dib);
    }
    // Each request, with the size asked for.
    const std::vector<std::pair<std::wstring, int>>& Requests() const { return m_requests; }

    std::vector<std::uint8_t> Extract(const std::wstring& path, int size) override {
        m_requests.emplace_back(path, size);
        auto it = m_pictures.find(path);
        return it == m_pictures.end() ? std::vector<std::uint8_t>{} : it->second;
    }

private:
    std::map<std::wstring, std::vector<std::uint8_t>> m_pictures;
    std::vector<std::pair<std::wstring, int>> m_requests;
};
