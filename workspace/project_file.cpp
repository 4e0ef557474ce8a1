#include "workspace/project_file.h"

#include "workspace/characters.h"
#include "workspace/raw_line.h"
#include "workspace/text_file.h"

#include <functional>
#include <optional>
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

// A value may stand in quotes.
TextView Unquoted(TextView value) {
    value = Trimmed(value);
    if (value.size() >= 2 && value.front() == u'"' && value.back() == u'"') {
        value = Trimmed(value.substr(1, value.size() - 2));
    }
    return value;
}

// Calls `take` with key, value and line of each "key=value" ahead of the first section.
std::optional<Diagnostic> ForEachEntry(
    const std::filesystem::path& path, std::string_view bytes, const EncodingPtr& codePage,
    const std::function<void(TextView key, TextView value, std::int64_t line)>& take) {
    const bool utf16 = codePage->unitSize() == 2 && bytes.contains('\0');
    auto text = RecogniseText(path, bytes, codePage->unitSize() == 1 || utf16 ? codePage : DefaultEncoding());
    if (!text) {
        return std::move(text.error());
    }
    Text decoded;
    std::int64_t line = 0;
    for (std::size_t at = text->begin; at < bytes.size();) {
        const RawLine raw = NextRawLine(bytes, at, *text->encoding);
        text->encoding->Decode(bytes.substr(raw.begin, raw.end - raw.begin), decoded);
        at = raw.next;
        ++line;
        if (Trimmed(decoded).starts_with(u'[')) {
            break;
        }
        const std::size_t equals = decoded.find(u'=');
        if (equals != Text::npos) {
            take(Trimmed(TextView(decoded).substr(0, equals)), Trimmed(TextView(decoded).substr(equals + 1)),
                 line);
        }
    }
    return std::nullopt;
}

struct ComponentKey {
    TextView key;
    ComponentType type;
    bool named;  // its value is "Name; path", else a path
};

constexpr ComponentKey componentKeys[] = {
    {u"Module", ComponentType::Module, true},
    {u"Class", ComponentType::Class, true},
    {u"Form", ComponentType::Form, false},
    {u"UserControl", ComponentType::UserControl, false},
    {u"PropertyPage", ComponentType::PropertyPage, false},
    {u"UserDocument", ComponentType::UserDocument, false},
    {u"Designer", ComponentType::Designer, false},
};

constexpr TextView otherKeys[] = {u"ResFile32", u"ResFile16", u"RelatedDoc", u"HelpFile", u"CompatibleEXE32"};

FileEntry ComponentEntry(const ComponentKey& key, TextView value, std::int64_t line) {
    FileEntry entry{line, key.type, {}, {}};
    const std::size_t semicolon = key.named ? value.find(u';') : TextView::npos;
    if (semicolon != TextView::npos) {
        entry.name = Unquoted(value.substr(0, semicolon));
        value = value.substr(semicolon + 1);
    }
    entry.path = ToUtf8(Unquoted(value));
    return entry;
}

// The type library that a reference names, "*\G{guid}#version#lcid#path#title", where it lies below the
// project's folder; others belong to the machine.
TextView OwnTypeLibrary(TextView reference) {
    constexpr int fieldsAheadOfPath = 3;
    for (int i = 0; i < fieldsAheadOfPath; ++i) {
        const std::size_t separator = reference.find(u'#');
        if (separator == TextView::npos) {
            return {};
        }
        reference.remove_prefix(separator + 1);
    }
    const TextView path = reference.substr(0, reference.find(u'#'));
    const bool leadsElsewhere =
        path.starts_with(u'\\') || path.find(u':') != TextView::npos || path.find(u"..") != TextView::npos;
    return leadsElsewhere ? TextView() : path;
}

}  // namespace

std::expected<ProjectFile, Diagnostic> ParseProjectFile(const std::filesystem::path& path,
                                                        std::string_view bytes, const EncodingPtr& codePage) {
    ProjectFile project;
    auto error = ForEachEntry(path, bytes, codePage, [&](TextView key, TextView value, std::int64_t line) {
        for (const ComponentKey& each : componentKeys) {
            if (SameName(key, each.key)) {
                project.components.push_back(ComponentEntry(each, value, line));
            }
        }
        for (const TextView other : otherKeys) {
            if (SameName(key, other) && !Unquoted(value).empty()) {
                project.others.push_back({line, {}, {}, ToUtf8(Unquoted(value))});
            }
        }
        if (SameName(key, u"Reference") && !OwnTypeLibrary(value).empty()) {
            project.others.push_back({line, {}, {}, ToUtf8(OwnTypeLibrary(value))});
        }
        if (SameName(key, u"Name") && project.name.empty()) {
            project.name = Unquoted(value);
        }
    });
    if (error) {
        return std::unexpected(*std::move(error));
    }
    return project;
}

std::expected<GroupFile, Diagnostic> ParseGroupFile(const std::filesystem::path& path, std::string_view bytes,
                                                    const EncodingPtr& codePage) {
    GroupFile group;
    auto error = ForEachEntry(path, bytes, codePage, [&](TextView key, TextView value, std::int64_t line) {
        const bool startup = SameName(key, u"StartupProject");
        if (startup) {
            group.startup = group.projects.size();
        }
        if (startup || SameName(key, u"Project")) {
            group.projects.push_back({line, {}, {}, ToUtf8(Unquoted(value))});
        }
    });
    if (error) {
        return std::unexpected(*std::move(error));
    }
    return group;
}

}  // namespace lintara::workspace
