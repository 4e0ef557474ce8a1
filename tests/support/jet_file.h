// Makes small code databases of the old format, page by page, as no packaged program does: a catalog with one
// table, the table `CPBuffers` and its rows. What no reader of the buffers looks at is left out (indexes,
// among others), so the programs that made such files may not want them.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace lintara::support {

struct JetTable {
    std::u16string name = u"CPBuffers";
    std::u16string keyField = u"Key";
    std::u16string codeField = u"Code";
    std::map<std::int32_t, std::string> bytesByKey = {};    // texts in the form that the file holds
    std::map<std::int32_t, std::u16string> codeByKey = {};  // all of one page together, but for long texts
};

// The bytes of the file. Texts of more than a few hundred characters stand on pages of their own, those that
// fill one on a chain of them.
[[nodiscard]] std::string JetFile(const JetTable& table);

}  // namespace lintara::support
