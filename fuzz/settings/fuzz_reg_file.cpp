// The registry export file as a user's hand may leave it. Whatever the bytes, parsing must not
// fault; a parsed document must write out and read back to the same document (nothing lost on
// the next write), and every value read back must decode as the settings decode values.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/portable/reg_file_document.h"
#include "settings/window_placement.h"

namespace {

void Check(bool condition) {
    if (!condition)
        std::abort();
}

void CheckSameDocument(const RegFileDocument& a, const RegFileDocument& b) {
    Check(a.m_prologue == b.m_prologue);
    Check(a.m_keys.size() == b.m_keys.size());
    for (std::size_t k = 0; k < a.m_keys.size(); ++k) {
        const RegFileKey& x = a.m_keys[k];
        const RegFileKey& y = b.m_keys[k];
        Check(x.hive == y.hive && x.path == y.path && x.keptLines == y.keptLines);
        Check(x.values.size() == y.values.size());
        for (std::size_t v = 0; v < x.values.size(); ++v) {
            Check(x.values[v].name == y.values[v].name);
            Check(x.values[v].value == y.values[v].value);
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view bytes(reinterpret_cast<const char*>(data), size);
    std::optional<RegFileDocument> document = RegFileDocument::Parse(bytes);
    if (!document)
        return 0;
    for (const RegFileKey& key : document->m_keys) {
        for (const RegFileValue& value : key.values) {
            std::wstring text = reg::StringText(value.value.data);
            ParseWindowPlacement(text);
        }
    }
    std::string written = document->Serialize();
    std::optional<RegFileDocument> again = RegFileDocument::Parse(written);
    Check(again.has_value());
    CheckSameDocument(*document, *again);
    Check(again->Serialize() == written);
    return 0;
}
