#include "workspace/component_file.h"

#include "workspace/characters.h"
#include "workspace/raw_line.h"
#include "workspace/text_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <utility>

namespace lintara::workspace {

namespace {

using hostmodel::ComponentType;

TextView Trimmed(TextView text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// Splits off what stands before the first blank; the rest begins at the next word.
TextView TakeWord(TextView& text) {
    const auto* const end = std::ranges::find_if(text, IsBlank);
    const TextView word = text.substr(0, static_cast<std::size_t>(end - text.begin()));
    text = Trimmed(text.substr(word.size()));
    return word;
}

// The text of a value in quotes, in which two quotes stand for one.
Text Unquoted(TextView value) {
    value = Trimmed(value);
    if (!value.starts_with(u'"')) {
        return Text(value);
    }
    Text text;
    for (std::size_t i = 1; i < value.size(); ++i) {
        if (value[i] == u'"') {
            if (i + 1 >= value.size() || value[i + 1] != u'"') {
                break;
            }
            ++i;
        }
        text += value[i];
    }
    return text;
}

// "VB.CommandButton" is a CommandButton.
Text WithoutLibrary(TextView className) {
    const std::size_t dot = className.rfind(u'.');
    return Text(dot == TextView::npos ? className : className.substr(dot + 1));
}

// Reads the lines of a head one by one, until one is none of its own.
class HeadReader {
  public:
    HeadReader(const std::filesystem::path& path, std::string_view bytes, const TextFile& text,
               ComponentFile& component)
        : path_(path), bytes_(bytes), encoding_(*text.encoding), at_(text.begin), component_(component) {
        component_.codeBegin = text.begin;
    }

    // The value is an error when the head is not closed.
    [[nodiscard]] std::optional<Diagnostic> Read();

  private:
    // An open Begin or BeginProperty.
    struct Block {
        bool property = false;
        std::int64_t line = 0;
    };

    bool NextLine();
    bool TakeHeadLine(TextView line);
    bool TakeObjectLine(TextView line);
    bool TakeBlockBegin(TextView line);
    bool TakeAttribute(TextView line);
    void TakeBlockLine(TextView line);
    void CloseBlock(bool property);
    void TakeOutermostClass(TextView className);
    [[nodiscard]] bool mayHaveBlock() const {
        return component_.type != ComponentType::Module || sawVersion_;
    }
    [[nodiscard]] Diagnostic Unclosed() const;

    const std::filesystem::path& path_;
    std::string_view bytes_;
    const Encoding& encoding_;
    std::size_t at_;
    std::int64_t lineNumber_ = 0;
    Text line_;
    bool sawVersion_ = false;
    bool sawBlock_ = false;
    bool sawAttribute_ = false;
    std::vector<Block> open_;
    ComponentFile& component_;
};

bool HeadReader::NextLine() {
    if (at_ >= bytes_.size()) {
        return false;
    }
    const RawLine raw = NextRawLine(bytes_, at_, encoding_);
    encoding_.Decode(bytes_.substr(raw.begin, raw.end - raw.begin), line_);
    at_ = raw.next;
    ++lineNumber_;
    return true;
}

std::optional<Diagnostic> HeadReader::Read() {
    while (NextLine()) {
        if (!open_.empty()) {
            // Attribute lines follow the block and never stand in it.
            if (line_.starts_with(u"Attribute VB_")) {
                return Unclosed();
            }
            TakeBlockLine(Trimmed(line_));
            component_.codeBegin = at_;
        } else if (TakeHeadLine(line_)) {
            component_.codeBegin = at_;
        } else if (!Trimmed(line_).empty()) {
            break;
        }
        // A blank line belongs to the head only when more of the head follows.
    }
    return open_.empty() ? std::nullopt : std::optional(Unclosed());
}

bool HeadReader::TakeHeadLine(TextView line) {
    if (lineNumber_ == 1) {
        TextView rest = Trimmed(line);
        sawVersion_ = SameName(TakeWord(rest), u"VERSION") && !rest.empty() && IsDigit(rest.front());
        if (sawVersion_) {
            return true;
        }
    }
    return TakeObjectLine(Trimmed(line)) || TakeBlockBegin(Trimmed(line)) || TakeAttribute(line);
}

bool HeadReader::TakeObjectLine(TextView line) {
    constexpr TextView keyword = u"Object";
    return mayHaveBlock() && !sawBlock_ && !sawAttribute_ && line.size() > keyword.size() &&
           SameName(line.substr(0, keyword.size()), keyword) &&
           Trimmed(line.substr(keyword.size())).starts_with(u'=');
}

bool HeadReader::TakeBlockBegin(TextView line) {
    if (!mayHaveBlock() || sawBlock_ || sawAttribute_ || !SameName(TakeWord(line), u"Begin")) {
        return false;
    }
    sawBlock_ = true;
    open_.push_back({false, lineNumber_});
    TakeOutermostClass(TakeWord(line));
    return true;
}

void HeadReader::TakeOutermostClass(TextView className) {
    if (component_.type != ComponentType::Form) {
        return;
    }
    if (SameName(className, u"VB.MDIForm")) {
        component_.type = ComponentType::MDIForm;
    } else if (className.starts_with(u'{')) {
        component_.type = ComponentType::OfficeForm;
    }
}

// Attribute VB_Name = "Invoice"
bool HeadReader::TakeAttribute(TextView line) {
    constexpr TextView keyword = u"Attribute";
    if (!SameName(line.substr(0, keyword.size()), keyword) || line.size() == keyword.size() ||
        !IsBlank(line[keyword.size()])) {
        return false;
    }
    line = Trimmed(line.substr(keyword.size()));
    const auto* const end =
        std::ranges::find_if(line, [](char16_t c) { return !IsWordCharacter(c) && c != u'.'; });
    const TextView name = line.substr(0, static_cast<std::size_t>(end - line.begin()));
    const TextView rest = Trimmed(line.substr(name.size()));
    if (name.empty() || !IsLetter(name.front()) || !rest.starts_with(u'=')) {
        return false;
    }
    sawAttribute_ = true;
    if (component_.name.empty() && SameName(name, u"VB_Name")) {
        component_.name = Unquoted(rest.substr(1));
    }
    return true;
}

void HeadReader::TakeBlockLine(TextView line) {
    TextView rest = line;
    const TextView word = TakeWord(rest);
    if (rest.empty()) {
        if (SameName(word, u"End")) {
            CloseBlock(false);
        } else if (SameName(word, u"EndProperty")) {
            CloseBlock(true);
        }
    }
    if (rest.starts_with(u'=')) {
        return;  // a property that bears such a name
    }
    if (SameName(word, u"BeginProperty")) {
        open_.push_back({true, lineNumber_});
    } else if (SameName(word, u"Begin")) {
        open_.push_back({false, lineNumber_});
        const Text className = WithoutLibrary(TakeWord(rest));
        if (component_.designer) {
            component_.designer->push_back({Text(TakeWord(rest)), className});
        }
    }
}

// An End closes the properties that were left open in its object, too; an EndProperty closes no object.
void HeadReader::CloseBlock(bool property) {
    while (!property && open_.size() > 1 && open_.back().property) {
        open_.pop_back();
    }
    if (open_.back().property == property) {
        open_.pop_back();
    }
}

Diagnostic HeadReader::Unclosed() const {
    const Block& block = open_.back();
    const std::string begin = block.property ? "BeginProperty" : "Begin";
    const std::string end = block.property ? "EndProperty" : "End";
    return {path_, block.line,
            "this " + begin + " has no " + end +
                ", so it cannot be told where the code starts; restore the file or add the missing line"};
}

// The first line longer than the IDE accepts. A look at every 1023 bytes tells for most files that there is
// none: where a line ends in each such window, no line is longer.
std::optional<std::size_t> FirstLongLine(std::string_view bytes, std::size_t from, const Encoding& encoding) {
    Text text;
    while (from < bytes.size()) {
        const std::string_view window = bytes.substr(from, longestLine);
        if (from + window.size() == bytes.size() && encoding.unitSize() == 1) {
            return std::nullopt;
        }
        const std::size_t ending =
            encoding.unitSize() == 1 ? window.find_last_of("\r\n") : std::string_view::npos;
        if (ending != std::string_view::npos) {
            from += ending + 1;
            continue;
        }
        const RawLine raw = NextRawLine(bytes, from, encoding);
        encoding.Decode(bytes.substr(raw.begin, raw.end - raw.begin), text);
        const bool hidden = text.starts_with(u"Attribute ") && text.contains(u".VB_");
        if (text.size() > longestLine && !hidden) {
            return from;
        }
        from = raw.next;
    }
    return std::nullopt;
}

}  // namespace

std::optional<ComponentType> ComponentTypeOf(const std::filesystem::path& path) {
    static constexpr std::array<std::pair<std::string_view, ComponentType>, 7> types = {{
        {".bas", ComponentType::Module},
        {".cls", ComponentType::Class},
        {".frm", ComponentType::Form},
        {".pag", ComponentType::PropertyPage},
        {".ctl", ComponentType::UserControl},
        {".dob", ComponentType::UserDocument},
        {".dsr", ComponentType::Designer},
    }};
    std::string extension = path.extension().string();
    std::ranges::transform(extension, extension.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; });
    for (const auto& [known, type] : types) {
        if (extension == known) {
            return type;
        }
    }
    return std::nullopt;
}

std::expected<ComponentFile, Diagnostic> ParseComponentFile(const std::filesystem::path& path,
                                                            ComponentType type, std::string_view bytes,
                                                            const EncodingPtr& codePage) {
    auto text = RecogniseText(path, bytes, codePage);
    if (!text) {
        return std::unexpected(std::move(text.error()));
    }
    ComponentFile component;
    component.type = type;
    component.encoding = text->encoding;
    if (type != ComponentType::Module && type != ComponentType::Class) {
        component.designer.emplace();
    }
    if (auto error = HeadReader(path, bytes, *text, component).Read()) {
        return std::unexpected(*std::move(error));
    }
    if (bytes.size() == text->begin) {
        component.warnings.push_back({path, 0, "the file is empty"});
    }
    if (auto doubt = DoubtAboutEncoding(path, bytes, *text)) {
        component.warnings.push_back(*std::move(doubt));
    }
    if (const auto at = FirstLongLine(bytes, component.codeBegin, *text->encoding)) {
        component.warnings.push_back({path, FileLineAt(bytes, *at, *text),
                                      "this line is longer than the IDE's " + std::to_string(longestLine) +
                                          " characters; it is kept as it is"});
    }
    return component;
}

}  // namespace lintara::workspace
