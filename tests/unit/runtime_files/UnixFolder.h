#pragma once
// What only Unix tests ask of a folder: kinds of files, permissions, and a user who has few of
// them.

#include <sys/stat.h>
#ifdef __linux__
#include <sys/xattr.h>
#endif
#include <unistd.h>

#include <sstream>

#include "tests/unit/runtime_files/Folder.h"

namespace zorvane {

class UnixFolder : public Folder {
  public:
    using Folder::Folder;

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
                std::filesystem::create_symlink(rest[0] == '/' ? Path() + rest : rest, path);
            if (kind == '&') std::filesystem::create_hard_link(At(rest), path);
            if (kind == '|') Must(::mkfifo(path.c_str(), 0600) == 0);
            if (kind == '!')
                Must(::chmod(path.c_str(), static_cast<mode_t>(std::stoi(rest, {}, 8))) == 0);
        }
    }
#ifdef __linux__
    void SetAttribute(const std::string& name, const char* which, const std::string& value) const {
        Must(::setxattr(At(name).c_str(), which, value.data(), value.size(), 0) == 0);
    }
    // "" where it has none.
    [[nodiscard]] std::string Attribute(const std::string& name, const char* which) const {
        std::string value(100, '\0');
        const ssize_t size = ::getxattr(At(name).c_str(), which, value.data(), value.size());
        return value.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size));
    }
#endif
    [[nodiscard]] struct stat State(const std::string& name) const {
        struct stat state {};
        Must(::lstat(At(name).c_str(), &state) == 0);
        return state;
    }
};

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
