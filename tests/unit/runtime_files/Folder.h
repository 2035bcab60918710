#pragma once
// Folder: an empty directory for one test, gone with it; and files as plain texts of bytes.

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "zorvane/runtime/FileWords.h"

namespace zorvane {

// What a test needs before it can begin.
inline void Must(bool done) {
    if (!done) throw std::runtime_error("the file system refuses what the test needs");
}

class Folder {
  public:
    explicit Folder(const std::filesystem::path& base = std::filesystem::temp_directory_path()) {
        std::string name = (base / "zorvane-XXXXXX").string();
        Must(::mkdtemp(name.data()) != nullptr);
        path_ = name;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }

    [[nodiscard]] std::string At(const std::string& name) const { return path_ + "/" + name; }
    [[nodiscard]] const std::string& Path() const noexcept { return path_; }
    // The file's bytes, or nothing when there is no regular file of the name.
    [[nodiscard]] std::optional<std::string> Bytes(const std::string& name) const {
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(At(name), ignored)) return {};
        std::ifstream file(At(name), std::ios::binary);
        std::string bytes(std::filesystem::file_size(At(name)), '\0');
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes;
    }
    void Put(const std::string& name, const std::string& bytes) const {
        std::ofstream(At(name), std::ios::binary) << bytes;
    }
    // Makes what the words say: file=bytes, directory/, link>target (one that begins with / is
    // below this folder), name&file for its second name, fifo|, and name!mode for its permissions.
    void Make(const std::string& words) const {
        std::istringstream all(words);
        for (std::string word; all >> word;) {
            const std::size_t at = std::min(word.find_first_of("=>&|!"), word.size());
            const std::string name = word.substr(0, at), path = At(name);
            const std::string rest = word.substr(std::min(at + 1, word.size()));
            const char kind = word.c_str()[at];
            if (kind == '\0') std::filesystem::create_directory(path);
            if (kind == '=') Put(name, rest);
            if (kind == '>')
                std::filesystem::create_symlink(rest[0] == '/' ? path_ + rest : rest, path);
            if (kind == '&') std::filesystem::create_hard_link(At(rest), path);
            if (kind == '|') Must(::mkfifo(path.c_str(), 0600) == 0);
            if (kind == '!')
                Must(::chmod(path.c_str(), static_cast<mode_t>(std::stoi(rest, {}, 8))) == 0);
        }
    }
    [[nodiscard]] struct stat State(const std::string& name) const {
        struct stat state {};
        Must(::lstat(At(name).c_str(), &state) == 0);
        return state;
    }
    // Entries that are not among the names given.
    [[nodiscard]] std::vector<std::string> Others(const std::vector<std::string>& names) const {
        std::vector<std::string> others;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            const std::string name = entry.path().filename().string();
            if (std::find(names.begin(), names.end(), name) == names.end()) others.push_back(name);
        }
        return others;
    }

  private:
    std::string path_;
};

// Bytes as an array of words, the last padded by 0.
inline Variant WordsOf(const std::string& bytes) {
    std::vector<std::int16_t> words((bytes.size() + 1) / 2);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const int byte = static_cast<unsigned char>(bytes[i]) << (i % 2 * 8);
        words[i / 2] = static_cast<std::int16_t>(words[i / 2] | byte);
    }
    return Array::OfWords(words);
}

// Root passes over permissions: while one lives, the process is an ordinary user instead, and the
// folder is that user's.
class OrdinaryUser {
  public:
    explicit OrdinaryUser(const Folder& folder) : wasRoot_(::geteuid() == 0) {
        if (!wasRoot_) return;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Path()))
            Must(::lchown(entry.path().c_str(), kNobody, kNobody) == 0);
        Must(::chown(folder.Path().c_str(), kNobody, kNobody) == 0);
        Must(::setegid(kNobody) == 0 && ::seteuid(kNobody) == 0);
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser() {
        if (!wasRoot_) return;
        Must(::seteuid(0) == 0 && ::setegid(0) == 0);
    }

  private:
    static constexpr uid_t kNobody = 65534;
    bool wasRoot_;
};

}  // namespace zorvane
