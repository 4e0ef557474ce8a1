#include "workspace/module.h"

#include "base/text_scan.h"
#include "workspace/characters.h"
#include "workspace/declarations.h"
#include "workspace/find.h"
#include "workspace/gathered_edit.h"
#include "workspace/keyword_case.h"
#include "workspace/line_buffer.h"
#include "workspace/procedure_index.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>
#include <span>
#include <unordered_map>
#include <utility>

namespace lintara::workspace {

using hostmodel::MemberKind;
using hostmodel::MemberType;

namespace {

constexpr TextView lineBreak = u"\r\n";

// More than any line or module can hold, and few enough for the sizes kept per line.
constexpr std::size_t longestText = std::size_t{1} << 28U;

std::unexpected<HostError> NoSuchLine() {
    return Failure(ErrorNumber::InvalidArgument, "the line does not exist");
}

std::unexpected<HostError> NoSuchProcedure() {
    return Failure(ErrorNumber::InvalidArgument, "there is no procedure of that name and kind");
}

std::vector<TextView> SplitLines(TextView text) {
    std::vector<TextView> lines;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(FindExactly(text, lineBreak, begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + lineBreak.size();
        if (end == text.size()) {
            break;
        }
    }
    return lines;
}

}  // namespace

struct Module::Parts {
    Parts(std::string_view bytes, std::size_t codeBegin, EncodingPtr encoding)
        : lines(bytes, codeBegin, std::move(encoding)), index(lines), gathered(lines), finder(lines) {}

    [[nodiscard]] bool Exist(Line line, std::int32_t count) const {
        return line >= Line{1} && count >= 0 && line.value() - 1 <= lines.count() - count;
    }
    [[nodiscard]] bool ContinuesInto(Line line) const {
        if (line <= Line{1} || line > lines.last() + 1) {
            return false;
        }
        Text text;
        lines.Read(line - 1, text);
        return Continues(text);
    }
    [[nodiscard]] Line FirstHeader() const {
        return Procedures().size() > 0 ? Procedures().HeaderOf(0) : lines.last() + 1;
    }
    [[nodiscard]] const workspace::Declarations& Declared() const;
    [[nodiscard]] Line StartOf(std::size_t procedure) const;
    [[nodiscard]] ProcedureInfo InfoOf(std::size_t procedure) const;
    [[nodiscard]] MemberInfo MemberOf(std::size_t procedure) const;
    [[nodiscard]] std::optional<std::size_t> ProcedureAt(Line line) const;
    // Whether no procedure of the same property stands above this one.
    [[nodiscard]] bool IsFirstOfProperty(std::size_t procedure) const;

    // The index of the procedures, in step with all edits.
    [[nodiscard]] const ProcedureIndex& Procedures() const {
        Settle();
        return index;
    }
    // Carries the gathered edits into the index.
    void Settle() const;

    // Each edit is announced by the first line that it alters, and told when the lines are the new ones; see
    // ProcedureIndex.
    void BeforeEdit(Line line) const;
    void LineReplaced(Line line, TextView oldText, TextView newText);
    void LinesChanged(Line line, std::int32_t removed, std::int32_t added, bool lastContinued) {
        gathered.Add(line, removed, added, lastContinued);
    }
    void TellFinder(Line line, std::span<const TextView> newLines) const;

    LineBuffer lines;
    mutable ProcedureIndex index;
    mutable GatheredEdit gathered;
    Text oldLine;  // kept between edits for their room
    Text newLine;
    mutable Finder finder;
    mutable std::optional<workspace::Declarations> declarations;
    mutable std::unordered_map<Text, std::size_t>
        declaredNames;  // under the folded name, the first of several
};

const workspace::Declarations& Module::Parts::Declared() const {
    Settle();
    if (!declarations) {
        declarations = ReadDeclarations(lines, FirstHeader());
        if (index.size() == 0) {
            declarations->countOfLines = lines.count();
        }
        declaredNames.clear();
        for (std::size_t i = 0; i < declarations->members.size(); ++i) {
            declaredNames.emplace(FoldCase(declarations->members[i].name), i);
        }
    }
    return *declarations;
}

Line Module::Parts::StartOf(std::size_t procedure) const {
    return procedure == 0 ? Line{Declared().countOfLines} + 1 : Procedures().LastLineOf(procedure - 1) + 1;
}

ProcedureInfo Module::Parts::InfoOf(std::size_t procedure) const {
    ProcedureIndex::Procedure entry = Procedures()[procedure];
    return {.number = procedure,
            .name = std::move(entry.name),
            .kind = entry.kind,
            .isFunction = entry.extent.word == ProcedureWord::Function,
            .start = StartOf(procedure),
            .header = entry.header,
            .bodyBegin = entry.header + entry.headerLines,
            .closing = entry.extent.closing,
            .closed = entry.extent.closed};
}

MemberInfo Module::Parts::MemberOf(std::size_t procedure) const {
    const bool isProcedure = Procedures().KindOf(procedure) == MemberKind::vbext_pk_Proc;
    return {.name = Procedures().NameOf(procedure),
            .type = isProcedure ? MemberType::Method : MemberType::Property,
            .codeLocation = Procedures().HeaderOf(procedure)};
}

std::optional<std::size_t> Module::Parts::ProcedureAt(Line line) const {
    if (Procedures().size() == 0 || !Exist(line, 1) || line < StartOf(0)) {
        return std::nullopt;
    }
    // The block of a procedure begins above its header: what lies behind one procedure is the next one's,
    // and what lies behind the last one its own.
    const std::size_t above = Procedures().CountAbove(line);
    if (above > 0 && (line <= Procedures().LastLineOf(above - 1) || above == Procedures().size())) {
        return above - 1;
    }
    return above;
}

bool Module::Parts::IsFirstOfProperty(std::size_t procedure) const {
    static constexpr std::array kinds{MemberKind::vbext_pk_Let, MemberKind::vbext_pk_Set,
                                      MemberKind::vbext_pk_Get};
    return std::ranges::none_of(kinds, [&](MemberKind kind) {
        return Procedures().Find(Procedures().NameOf(procedure), kind).value_or(procedure) < procedure;
    });
}

void Module::Parts::BeforeEdit(Line line) const {
    if (!gathered.Takes(line)) {
        Settle();
    }
}

void Module::Parts::LineReplaced(Line line, TextView oldText, TextView newText) {
    if (gathered.Covers(line)) {
        return;
    }
    // Mostly that concerns no procedure and is seen at once.
    const bool standsAlone =
        !Continues(oldText) && !Continues(newText) && (line == Line{1} || !lines.EndsInUnderscore(line - 1));
    if (gathered.empty() && standsAlone && index.IsNoEdge(line, newText)) {
        if (line <= FirstHeader()) {
            declarations.reset();
        }
        return;
    }
    gathered.Add(line, 1, 1, Continues(oldText));
}

void Module::Parts::Settle() const {
    if (gathered.empty()) {
        return;
    }
    const Line line = gathered.begin();
    const std::int32_t removed = gathered.removed();
    const std::int32_t added = gathered.added();
    gathered.Clear();
    const Line oldFirstHeader = FirstHeader();
    index.LinesChanged(line, removed, added, false);
    if (line <= oldFirstHeader || line <= FirstHeader()) {
        declarations.reset();
    }
}

void Module::Parts::TellFinder(Line line, std::span<const TextView> newLines) const {
    for (const TextView text : newLines) {
        finder.TextChanged(line, text);
        ++line;
    }
}

Module::Module(std::string bytes, std::size_t codeBegin, EncodingPtr encoding)
    : original_(std::move(bytes)),
      encoding_(std::move(encoding)),
      codeBegin_(codeBegin),
      parts_(std::make_unique<Parts>(original_, codeBegin_, encoding_)) {}

Module::Parts& Module::parts() const {
    if (!parts_) {
        parts_ = std::make_unique<Parts>(current_ ? *current_ : original_, codeBegin_, encoding_);
    }
    return *parts_;
}

std::unique_ptr<Module> Module::FromText(TextView text) {
    std::string bytes;
    EncodingPtr memory = MemoryEncoding();
    [[maybe_unused]] const bool written = memory->Encode(text, bytes);
    return std::make_unique<Module>(std::move(bytes), 0, std::move(memory));
}

Module::~Module() = default;

std::int32_t Module::CountOfLines() const {
    return parts().lines.count();
}

Result<Text> Module::Lines(Line startLine, std::int32_t count) const {
    if (!parts().Exist(startLine, count)) {
        return NoSuchLine();
    }
    Text result;
    if (count == 0) {
        return result;
    }
    parts().lines.Read(startLine, result);
    Text text;
    for (std::int32_t i = 1; i < count; ++i) {
        parts().lines.Read(startLine + i, text);
        result += lineBreak;
        result += text;
    }
    return result;
}

Result<void> Module::InsertLines(Line line, TextView text) {
    if (!parts().Exist(line, 0)) {
        return NoSuchLine();
    }
    if (text.size() > longestText) {
        return Failure(ErrorNumber::OutOfMemory, "the text is too long");
    }
    Text recased(text);
    SetKeywordCase(recased, {0, recased.size()});
    const std::vector<TextView> newLines = SplitLines(recased);
    const bool lastContinued = parts().ContinuesInto(line);
    parts().BeforeEdit(line);
    parts().lines.Insert(line, newLines);
    parts().LinesChanged(line, 0, static_cast<std::int32_t>(newLines.size()), lastContinued);
    parts().finder.LinesMoved(line, 0, static_cast<std::int32_t>(newLines.size()));
    parts().TellFinder(line, newLines);
    return {};
}

Result<void> Module::DeleteLines(Line startLine, std::int32_t count) {
    if (!parts().Exist(startLine, count)) {
        return NoSuchLine();
    }
    if (count == 0) {
        return {};
    }
    const bool lastContinued = parts().ContinuesInto(startLine + count);
    parts().BeforeEdit(startLine);
    parts().lines.Delete(startLine, count);
    parts().LinesChanged(startLine, count, 0, lastContinued);
    parts().finder.LinesMoved(startLine, count, 0);
    return {};
}

Result<void> Module::ReplaceLine(Line line, TextView text) {
    if (!parts().Exist(line, 1)) {
        return NoSuchLine();
    }
    if (text.size() > longestText) {
        return Failure(ErrorNumber::OutOfMemory, "the text is too long");
    }
    if (FindExactly(text, lineBreak) == TextView::npos) {
        ReplaceByOne(line, text);
    } else {
        ReplaceBySeveral(line, text);
    }
    return {};
}

void Module::ReplaceByOne(Line line, TextView text) {
    Text& old = parts().oldLine;
    Text& recased = parts().newLine;
    parts().lines.Read(line, old);
    const TextPart changed = ChangedPart(old, text);
    recased = text;
    SetKeywordCase(recased, changed);
    if (recased == old) {
        return;
    }
    parts().BeforeEdit(line);
    parts().lines.Replace(line, recased);
    parts().LineReplaced(line, old, recased);
    parts().finder.TextChanged(line, recased);
}

void Module::ReplaceBySeveral(Line line, TextView text) {
    Text& old = parts().oldLine;
    parts().lines.Read(line, old);
    Text recased(text);
    SetKeywordCase(recased, ChangedPart(old, text));
    const std::vector<TextView> newLines = SplitLines(recased);
    const auto count = static_cast<std::int32_t>(newLines.size());
    parts().BeforeEdit(line);
    parts().lines.Replace(line, newLines.front());
    parts().lines.Insert(line + 1, std::span(newLines).subspan(1));
    parts().LinesChanged(line, 1, count, Continues(old));
    parts().finder.LinesMoved(line + 1, 0, count - 1);
    parts().TellFinder(line, newLines);
}

Result<void> Module::RestoreLine(Line line, TextView text) {
    if (!parts().Exist(line, 1)) {
        return NoSuchLine();
    }
    if (text.size() > longestText || text.contains(lineBreak)) {
        return Failure(ErrorNumber::InvalidArgument, "the text is no line");
    }
    parts().lines.Read(line, parts().oldLine);
    parts().BeforeEdit(line);
    parts().lines.Replace(line, text);
    parts().LineReplaced(line, parts().oldLine, text);
    parts().finder.TextChanged(line, text);
    return {};
}

std::int32_t Module::CountOfDeclarationLines() const {
    return parts().Declared().countOfLines;
}

Result<Line> Module::ProcStartLine(TextView name, MemberKind kind) const {
    const auto procedure = parts().Procedures().Find(name, kind);
    if (!procedure) {
        return NoSuchProcedure();
    }
    return parts().StartOf(*procedure);
}

Result<Line> Module::ProcBodyLine(TextView name, MemberKind kind) const {
    const auto procedure = parts().Procedures().Find(name, kind);
    if (!procedure) {
        return NoSuchProcedure();
    }
    return parts().Procedures().HeaderOf(*procedure);
}

Result<std::int32_t> Module::ProcCountLines(TextView name, MemberKind kind) const {
    const auto procedure = parts().Procedures().Find(name, kind);
    if (!procedure) {
        return NoSuchProcedure();
    }
    const bool isLast = *procedure + 1 == parts().Procedures().size();
    const Line last = isLast ? parts().lines.last() : parts().Procedures().LastLineOf(*procedure);
    return last - parts().StartOf(*procedure) + 1;
}

Result<Text> Module::ProcOfLine(Line line, MemberKind& kind) const {
    if (!parts().Exist(line, 1)) {
        return NoSuchLine();
    }
    const auto procedure = parts().ProcedureAt(line);
    if (!procedure) {
        return Text();
    }
    kind = parts().Procedures().KindOf(*procedure);
    return parts().Procedures().NameOf(*procedure);
}

bool Module::Find(TextView target, Position& start, Position& end, hostmodel::FindOptions options) const {
    const auto match = parts().finder.Find(target, start, end, options);
    if (!match) {
        return false;
    }
    start = match->start;
    end = match->end;
    return true;
}

void Module::ForgetSearches() const {
    parts().finder.Forget();
}

std::vector<ProcedureInfo> Module::Procedures() const {
    std::vector<ProcedureInfo> procedures;
    procedures.reserve(parts().Procedures().size());
    for (std::size_t i = 0; i < parts().Procedures().size(); ++i) {
        procedures.push_back(parts().InfoOf(i));
    }
    return procedures;
}

std::size_t Module::CountOfProcedures() const {
    return parts().Procedures().size();
}

ProcedureInfo Module::Procedure(std::size_t number) const {
    return parts().InfoOf(number);
}

std::optional<ProcedureInfo> Module::ProcedureAt(Line line) const {
    const auto procedure = parts().ProcedureAt(line);
    return procedure ? std::optional(parts().InfoOf(*procedure)) : std::nullopt;
}

std::vector<MemberInfo> Module::MemberList() const {
    std::vector<MemberInfo> members = parts().Declared().members;
    const ProcedureIndex& procedures = parts().Procedures();
    for (std::size_t i = 0; i < procedures.size(); ++i) {
        const MemberInfo member = parts().MemberOf(i);
        if (member.type == MemberType::Method || parts().IsFirstOfProperty(i)) {
            members.push_back(member);
        }
    }
    return members;
}

std::optional<MemberInfo> Module::FindMember(TextView name) const {
    const workspace::Declarations& declared = parts().Declared();
    const auto entry = parts().declaredNames.find(FoldCase(name));
    if (entry != parts().declaredNames.end()) {
        return declared.members[entry->second];
    }
    const auto procedure = parts().Procedures().Find(name, std::nullopt);
    return procedure ? std::optional(parts().MemberOf(*procedure)) : std::nullopt;
}

void Module::ReadLine(Line line, Text& text) const {
    parts().lines.Read(line, text);
}

Text Module::AllText() const {
    return *Lines(Line{1}, CountOfLines());
}

bool Module::edited() const {
    return current_.has_value() || (parts_ && parts_->lines.edited());
}

const std::string& Module::originalBytes() const {
    return original_;
}

ContentMark Module::originalMark() const {
    return forgotten_ ? *forgotten_ : MarkOf(original_);
}

void Module::ForgetOriginal() {
    if (!parts_ && current_ && !forgotten_) {
        forgotten_ = MarkOf(original_);
        std::string().swap(original_);  // an assignment would keep the room
    }
}

std::unique_ptr<Module> Module::AsLoaded() const {
    return std::make_unique<Module>(original_, codeBegin_, encoding_);
}

std::unique_ptr<Module> Module::Saved() const {
    std::string bytes;
    AppendCurrentBytes(bytes);
    return std::make_unique<Module>(std::move(bytes), codeBegin_, encoding_);
}

void Module::AppendCurrentBytes(std::string& bytes) const {
    if (parts_) {
        parts_->lines.AppendBytes(bytes);
    } else {
        bytes += current_ ? *current_ : original_;
    }
}

std::size_t Module::CountBytes() const {
    return parts_ ? parts_->lines.CountBytes() : (current_ ? *current_ : original_).size();
}

std::string_view Module::CurrentBytes(std::string& room) const {
    if (!parts_) {
        return current_ ? *current_ : original_;
    }
    room.clear();
    parts_->lines.AppendBytes(room);
    return room;
}

void Module::KeepBytesOnly() {
    if (!parts_ || parts_->lines.FirstUnencodable()) {
        return;
    }
    std::string bytes;
    bytes.reserve(parts_->lines.CountBytes());
    parts_->lines.AppendBytes(bytes);
    if (!current_) {
        originalLines_ = parts_->lines.originalLines();
    }
    parts_.reset();
    if (!forgotten_ && bytes == original_) {
        current_.reset();
    } else {
        current_ = std::move(bytes);
    }
}

std::optional<Unencodable> Module::FirstUnencodable() const {
    const auto line = parts_ ? parts_->lines.FirstUnencodable() : std::nullopt;
    if (!line) {
        return std::nullopt;
    }
    Text text;
    parts().lines.Read(*line, text);
    const std::size_t at = encoding().FirstUnencodable(text).value_or(0);
    char32_t character = at < text.size() ? text[at] : 0;
    if (at + 1 < text.size() && (text[at] & 0xFC00U) == 0xD800U && (text[at + 1] & 0xFC00U) == 0xDC00U) {
        character = 0x10000U + ((text[at] & 0x3FFU) << 10U) + (text[at + 1] & 0x3FFU);
    }
    return Unencodable{*line, Column{static_cast<std::int32_t>(at) + 1}, character};
}

std::int64_t Module::FileLine(Line line) const {
    return parts().lines.FileLine(line);
}

Line Module::OriginOf(Line line) const {
    return parts().lines.OriginOf(line);
}

std::int64_t Module::OriginalFileLine(Line origin) const {
    const ShownLines& shown = parts_ && !current_ ? parts_->lines.originalLines() : originalLines_;
    return shown.FileLine(origin);
}

const Encoding& Module::encoding() const {
    return *encoding_;
}

}  // namespace lintara::workspace
