#pragma once
// Folder: an empty directory for one test, gone with it; and files as plain texts of bytes.

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "zorvane/runtime/FileWords.h"
#include "zorvane/runtime/detail/TemporaryName.h"

namespace zorvane {

using namespace modZorvane;

// What a test needs before it can begin.
inline void Must(bool done) {
    if (!done) throw std::runtime_error("the file system refuses what the test needs");
}

class Folder {
  public:
    explicit Folder(const std::filesystem::path& base = std::filesystem::temp_directory_path()) {
        path_ = (base / ("zorvane" + TemporaryName())).string();
        Must(std::filesystem::create_directory(path_));
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
        std::string bytes(static_cast<std::size_t>(std::filesystem::file_size(At(name))), '\0');
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return bytes;
    }
    void Put(const std::string& name, const std::string& bytes) const {
        std::ofstream(At(name), std::ios::binary) << bytes;
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

}  // namespace zorvane
