#pragma once
// The lines of a profile file as the profile functions see them, with the bytes of every line
// that was not changed kept as they were read, so that a rewrite loses nothing the reader did
// not understand: comments, odd spacing, bytes in another encoding, even NUL bytes.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class ProfileDocument {
public:
    enum class Kind { Blank, Header, Entry };

    struct Line {
        Kind kind = Kind::Blank;
        std::wstring name;                  // section name of a header, key of an entry
        std::optional<std::wstring> value;  // entries with "=" only
        // The bytes read, as a range of the file's bytes; none for a line made here.
        bool hasRaw = false;
        std::size_t rawBegin = 0;
        std::size_t rawLength = 0;
    };

    // Lines [begin, end) after a header; `header` is npos for the lines before the first one.
    struct Section {
        std::size_t header = 0;
        std::size_t begin = 0;
        std::size_t end = 0;
    };
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    ProfileDocument() = default;
    // Reads UTF-16LE with its byte order mark, otherwise UTF-8 line by line, taking a line that
    // is no valid UTF-8 as Windows-1252, the encoding such files were written in before.
    static ProfileDocument Parse(std::string_view bytes);
    std::string Serialize() const;

    const std::vector<Line>& Lines() const { return m_lines; }

    // The first section of that name (compared trimmed and without regard to case); the empty
    // name finds the lines before the first header.
    std::optional<Section> FindSection(std::wstring_view name) const;
    // The first entry of that key within the section, as an index into Lines().
    std::optional<std::size_t> FindEntry(const Section& section, std::wstring_view key) const;
    std::vector<std::wstring> SectionNames() const;

    void SetValue(std::size_t entry, const std::wstring& value);
    void Erase(std::size_t first, std::size_t last);
    // Inserts `key=value` after the section's last line that is not blank.
    void AddEntry(const Section& section, const std::wstring& key, const std::wstring& value);
    Section AddSection(const std::wstring& name);
    // Replaces the section's lines, keeping blank lines that separate it from the next header.
    void ReplaceLines(const Section& section, const std::vector<std::wstring>& lines);

private:
    static Line ParseLine(std::wstring_view text);
    static Line MakeLine(const std::wstring& text);
    std::size_t LastFilled(const Section& section) const;

    std::string m_source;  // the bytes read, which unchanged lines point into
    std::vector<Line> m_lines;
    bool m_byteOrderMark = true;   // new files carry one, so that every reader takes them as UTF-8
    bool m_carriageReturn = true;  // line ends of lines made here follow the file's first line
};

// The whitespace that the profile functions trim: ASCII blanks and the end-of-file mark 0x1A.
bool IsProfileSpace(wchar_t c);
std::wstring_view TrimProfileSpace(std::wstring_view text);
