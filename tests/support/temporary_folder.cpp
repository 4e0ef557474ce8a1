#include "tests/support/temporary_folder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace lintara::support {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "lintara-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder can be made");
    }
    path_ = fs::canonical(name);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    for (fs::recursive_directory_iterator entry(path_, ignored), end; !ignored && entry != end;
         entry.increment(ignored)) {
        if (entry->is_directory(ignored) && !entry->is_symlink(ignored)) {
            fs::permissions(entry->path(), fs::perms::owner_all, fs::perm_options::add, ignored);
        }
    }
    fs::remove_all(path_, ignored);
}

fs::path TemporaryFolder::Write(std::string_view name, std::string_view bytes) const {
    const fs::path file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    stream.close();
    if (!stream) {
        throw std::runtime_error("cannot write " + file.string());
    }
    return file;
}

std::string TemporaryFolder::Read(std::string_view name) const {
    return ReadBytes(path_ / name);
}

std::map<std::string, std::string> TemporaryFolder::Files() const {
    std::map<std::string, std::string> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(path_)) {
        if (!entry.is_directory()) {
            files[entry.path().lexically_relative(path_).string()] = ReadBytes(entry.path());
        }
    }
    return files;
}

std::string ReadBytes(const fs::path& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        return "<unreadable>";
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

}  // namespace lintara::support
