// Reading and saving on Windows.
//
// Old or new, never torn: the new file is renamed over the old one in one step, with POSIX meaning
// where the system has that (also while others read the old file), else by MoveFileExW. On the disk
// when the save returns: FlushFileBuffers of the file before the rename, which goes through a
// handle that writes through. Access list, attributes and time of creation are kept; a file with
// streams beside its own is written in place, since a new one would lack them. Every handle lets
// others read, write and rename; turns are LockFileEx's, on a byte behind all that files hold, so
// that only those who ask are kept out. Paths are the system's own UTF-16, never converted.

#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "zorvane/runtime/detail/SystemFile.h"
#include "zorvane/runtime/detail/TemporaryName.h"

namespace zorvane {
namespace {

constexpr std::size_t kMostAtOnce = std::size_t{1} << 30;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::uint64_t kLockedByte = std::uint64_t{1} << 62;
constexpr DWORD kQuotaExceeded = 1295;  // ERROR_DISK_QUOTA_EXCEEDED, which some headers lack

// FileRenameInfoEx of Windows 10 and what goes with it; headers disagree on when they have it.
constexpr auto kRenameInfoEx = static_cast<FILE_INFO_BY_HANDLE_CLASS>(22);
constexpr DWORD kReplace = 1, kPosixMeaning = 2;
struct RenameInfo {
    DWORD Flags;
    HANDLE RootDirectory;
    DWORD FileNameLength;
    WCHAR FileName[1];
};

std::error_code Made(std::errc failure) noexcept {
    return std::make_error_code(failure);
}

// The system's numbers as the ones that callers compare with.
std::error_code MadeFrom(DWORD number) noexcept {
    switch (number) {
        case ERROR_FILE_NOT_FOUND:
        case ERROR_PATH_NOT_FOUND:
        case ERROR_BAD_NETPATH:
        case ERROR_BAD_NET_NAME:
        case ERROR_INVALID_NAME:
        case ERROR_INVALID_DRIVE:
            return Made(std::errc::no_such_file_or_directory);
        case ERROR_ACCESS_DENIED:
        case ERROR_NETWORK_ACCESS_DENIED:
            return Made(std::errc::permission_denied);
        case ERROR_SHARING_VIOLATION:
        case ERROR_LOCK_VIOLATION:
        case ERROR_USER_MAPPED_FILE:
            return Made(std::errc::device_or_resource_busy);
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
        case kQuotaExceeded:
            return Made(std::errc::no_space_on_device);
        case ERROR_WRITE_PROTECT:
            return Made(std::errc::read_only_file_system);
        case ERROR_FILE_TOO_LARGE:
            return Made(std::errc::file_too_large);
        case ERROR_TOO_MANY_OPEN_FILES:
            return Made(std::errc::too_many_files_open);
        case ERROR_NOT_ENOUGH_MEMORY:
        case ERROR_OUTOFMEMORY:
        case ERROR_NO_SYSTEM_RESOURCES:
            return Made(std::errc::not_enough_memory);
        case ERROR_FILENAME_EXCED_RANGE:
            return Made(std::errc::filename_too_long);
        case ERROR_CANT_RESOLVE_FILENAME:
            return Made(std::errc::too_many_symbolic_link_levels);
        case ERROR_INVALID_FUNCTION:
        case ERROR_NOT_SUPPORTED:
        case ERROR_CALL_NOT_IMPLEMENTED:
            return Made(std::errc::operation_not_supported);
        case ERROR_CRC:
        case ERROR_IO_DEVICE:
        case ERROR_SECTOR_NOT_FOUND:
        case ERROR_READ_FAULT:
        case ERROR_WRITE_FAULT:
            return Made(std::errc::io_error);
        default:
            return {static_cast<int>(number), std::system_category()};
    }
}

std::error_code LastError() noexcept {
    return MadeFrom(::GetLastError());
}

std::error_code Done(BOOL done) noexcept {
    return done ? std::error_code() : LastError();
}

HANDLE Number(const SystemFile& file) noexcept {
    return reinterpret_cast<HANDLE>(file.Handle());
}

SystemFile OpenFile(const std::filesystem::path& path, DWORD access, DWORD how, DWORD flags = 0,
                    DWORD share = kShareAll) noexcept {
    const HANDLE made = ::CreateFileW(path.c_str(), access, share, nullptr, how,
                                      FILE_ATTRIBUTE_NORMAL | flags, nullptr);
    return SystemFile(reinterpret_cast<std::intptr_t>(made));
}

// Why a path could not be opened: for a folder the system says that access is denied.
std::error_code WhyNot(const std::filesystem::path& path) noexcept {
    const DWORD failure = ::GetLastError();
    const DWORD kind = ::GetFileAttributesW(path.c_str());
    if (kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return Made(std::errc::is_a_directory);
    return MadeFrom(failure);
}

std::error_code StateOf(const SystemFile& file, BY_HANDLE_FILE_INFORMATION& state) noexcept {
    if (::GetFileType(Number(file)) != FILE_TYPE_DISK) return Made(std::errc::invalid_argument);
    return Done(::GetFileInformationByHandle(Number(file), &state));
}

std::uint64_t SizeOf(const BY_HANDLE_FILE_INFORMATION& state) noexcept {
    return std::uint64_t{state.nFileSizeHigh} << 32 | state.nFileSizeLow;
}

bool SameFile(const BY_HANDLE_FILE_INFORMATION& a, const BY_HANDLE_FILE_INFORMATION& b) noexcept {
    return a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
           a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
}

OVERLAPPED At(std::uint64_t offset) noexcept {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(offset);
    at.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return at;
}

// Named streams: the first is the file's own bytes.
bool HasOtherStreams(const std::filesystem::path& path) noexcept {
    WIN32_FIND_STREAM_DATA stream;
    const HANDLE streams = ::FindFirstStreamW(path.c_str(), FindStreamInfoStandard, &stream, 0);
    if (streams == INVALID_HANDLE_VALUE) return false;  // a file system that has none
    const bool another = ::FindNextStreamW(streams, &stream) != 0;
    ::FindClose(streams);
    return another;
}

// The path of an open file without links.
std::filesystem::path FinalPath(const SystemFile& file, const std::filesystem::path& otherwise) {
    std::wstring path(::GetFinalPathNameByHandleW(Number(file), nullptr, 0, 0), L'\0');
    const DWORD size =
        ::GetFinalPathNameByHandleW(Number(file), path.data(), static_cast<DWORD>(path.size()), 0);
    if (size == 0 || size >= path.size()) return otherwise;
    path.resize(size);
    return path;
}

}  // namespace

SystemFile::~SystemFile() {
    if (*this) ::CloseHandle(Number(*this));
}

bool SystemFile::Await(Turn turn) const noexcept {
    using namespace std::chrono_literals;
    const DWORD how =
        LOCKFILE_FAIL_IMMEDIATELY | (turn == Turn::Write ? LOCKFILE_EXCLUSIVE_LOCK : 0);
    for (auto waited = 0ms; waited < 2s; waited += 1ms) {
        OVERLAPPED at = At(kLockedByte);
        if (::LockFileEx(Number(*this), how, 0, 1, 0, &at)) return true;
        const DWORD failure = ::GetLastError();
        if (failure != ERROR_LOCK_VIOLATION && failure != ERROR_IO_PENDING) return true;
        std::this_thread::sleep_for(1ms);
    }
    return false;
}

std::error_code SystemFile::ReadAt(std::span<std::byte> bytes, std::uint64_t offset,
                                   std::size_t& got) const noexcept {
    for (got = 0; got < bytes.size();) {
        OVERLAPPED at = At(offset + got);
        const auto size = static_cast<DWORD>(std::min(bytes.size() - got, kMostAtOnce));
        DWORD count = 0;
        if (!::ReadFile(Number(*this), bytes.data() + got, size, &count, &at))
            return ::GetLastError() == ERROR_HANDLE_EOF ? std::error_code() : LastError();
        if (count == 0) break;
        got += count;
    }
    return {};
}

std::error_code SystemFile::Reserve(std::uint64_t size) const noexcept {
    FILE_ALLOCATION_INFO room{};
    LARGE_INTEGER now{};
    if (!::GetFileSizeEx(Number(*this), &now)) return LastError();
    if (static_cast<std::uint64_t>(now.QuadPart) >= size) return {};
    room.AllocationSize.QuadPart = static_cast<LONGLONG>(size);
    const std::error_code error =
        Done(::SetFileInformationByHandle(Number(*this), FileAllocationInfo, &room, sizeof room));
    return error == std::errc::operation_not_supported ? std::error_code() : error;
}

std::error_code SystemFile::Sync() const noexcept {
    return Done(::FlushFileBuffers(Number(*this)));
}

std::error_code SystemFile::Truncate(std::uint64_t size) const noexcept {
    FILE_END_OF_FILE_INFO end{};
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
    return Done(::SetFileInformationByHandle(Number(*this), FileEndOfFileInfo, &end, sizeof end));
}

std::error_code SystemFile::WriteAt(std::span<const std::byte> bytes,
                                    std::uint64_t offset) const noexcept {
    for (std::size_t done = 0; done < bytes.size();) {
        OVERLAPPED at = At(offset + done);
        const auto size = static_cast<DWORD>(std::min(bytes.size() - done, kMostAtOnce));
        DWORD count = 0;
        if (!::WriteFile(Number(*this), bytes.data() + done, size, &count, &at)) return LastError();
        if (count == 0) return Made(std::errc::io_error);
        done += count;
    }
    return {};
}

std::error_code OpenToRead(const std::filesystem::path& path, SystemFile& file,
                           std::uint64_t& size) {
    file = OpenFile(path, GENERIC_READ, OPEN_EXISTING);
    if (!file) return WhyNot(path);
    BY_HANDLE_FILE_INFORMATION state;
    if (const std::error_code error = StateOf(file, state)) return error;
    (void)file.Await(SystemFile::Turn::Read);  // whoever holds it for long is no writer of ours
    if (const std::error_code error = StateOf(file, state)) return error;
    size = SizeOf(state);
    return {};
}

std::error_code SavePlace::Open(const std::filesystem::path& path) {
    std::error_code error;
    Name = std::filesystem::absolute(path, error);
    if (error) return error;
    Old = OpenFile(path, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
    if (!Old) {
        const bool none = ::GetLastError() == ERROR_FILE_NOT_FOUND;
        return none ? std::error_code() : WhyNot(path);
    }
    BY_HANDLE_FILE_INFORMATION state;
    if (error = StateOf(Old, state); error) return error;
    Name = FinalPath(Old, Name);
    OldSize = SizeOf(state);
    OldStays = state.nNumberOfLinks > 1 || HasOtherStreams(Name);
    return {};
}

std::error_code SavePlace::LookAgain() {
    BY_HANDLE_FILE_INFORMATION state, named;
    if (const std::error_code error = StateOf(Old, state)) return error;
    OldSize = SizeOf(state);
    const SystemFile now = OpenFile(Name, FILE_READ_ATTRIBUTES, OPEN_EXISTING);
    const bool same = now && !StateOf(now, named) && SameFile(state, named);
    return same ? std::error_code() : Made(std::errc::resource_unavailable_try_again);
}

// Nothing but an attempt tells what an access list allows.
std::error_code SavePlace::MayAdd() const {
    const std::filesystem::path trial = Name.parent_path() / TemporaryName();
    const SystemFile made =
        OpenFile(trial, GENERIC_WRITE | DELETE, CREATE_NEW, FILE_FLAG_DELETE_ON_CLOSE);
    return made ? std::error_code() : LastError();
}

void SavePlace::RemoveLeftOvers() const {
    WIN32_FIND_DATAW entry;
    const std::filesystem::path folder = Name.parent_path();
    const HANDLE entries = ::FindFirstFileW((folder / L"*").c_str(), &entry);
    if (entries == INVALID_HANDLE_VALUE) return;
    do {
        const std::wstring_view name(entry.cFileName);
        const bool plain = std::ranges::all_of(name, [](wchar_t unit) { return unit < 0x80; });
        if (!plain || !IsTemporaryName(std::string(name.begin(), name.end()))) continue;
        // Nobody else may have it open: a file that somebody is saving is not left over.
        const SystemFile left = OpenFile(folder / name, DELETE, OPEN_EXISTING,
                                         FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT,
                                         /*share=*/0);
    } while (::FindNextFileW(entries, &entry));
    ::FindClose(entries);
}

// The rename went through a handle that writes through.
std::error_code SavePlace::Settle() const {
    return {};
}

NewFile::~NewFile() {
    if (name_.empty()) return;
    FILE_DISPOSITION_INFO gone{};
    gone.DeleteFile = TRUE;
    ::SetFileInformationByHandle(Number(file_), FileDispositionInfo, &gone, sizeof gone);
}

std::error_code NewFile::Create(Naming naming) {
    if (naming == Naming::None) return Made(std::errc::operation_not_supported);
    const std::filesystem::path name = place_.Name.parent_path() / TemporaryName();
    file_ = OpenFile(name, GENERIC_READ | GENERIC_WRITE | DELETE | WRITE_DAC, CREATE_NEW,
                     FILE_FLAG_WRITE_THROUGH);
    if (!file_) return LastError();
    name_ = name;
    return {};
}

std::error_code NewFile::KeepAttributes() const {
    if (!place_.Old) return {};
    DWORD size = 0;
    ::GetKernelObjectSecurity(Number(place_.Old), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
    std::vector<std::byte> list(size);
    if (!::GetKernelObjectSecurity(Number(place_.Old), DACL_SECURITY_INFORMATION, list.data(), size,
                                   &size) ||
        !::SetKernelObjectSecurity(Number(file_), DACL_SECURITY_INFORMATION, list.data()))
        return LastError();
    FILE_BASIC_INFO old{};
    if (!::GetFileInformationByHandleEx(Number(place_.Old), FileBasicInfo, &old, sizeof old))
        return LastError();
    // Zero leaves a time as it is.
    old.LastAccessTime.QuadPart = old.LastWriteTime.QuadPart = old.ChangeTime.QuadPart = 0;
    return Done(::SetFileInformationByHandle(Number(file_), FileBasicInfo, &old, sizeof old));
}

std::error_code NewFile::TakePlace() {
    const std::wstring& to = place_.Name.native();
    std::vector<std::byte> room(sizeof(RenameInfo) + to.size() * sizeof(wchar_t));
    auto* rename = reinterpret_cast<RenameInfo*>(room.data());
    rename->Flags = kReplace | kPosixMeaning;
    rename->FileNameLength = static_cast<DWORD>(to.size() * sizeof(wchar_t));
    std::ranges::copy(to, rename->FileName);
    if (!::SetFileInformationByHandle(Number(file_), kRenameInfoEx, rename,
                                      static_cast<DWORD>(room.size()))) {
        place_.Old = SystemFile();  // otherwise it could not be replaced
        constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
        if (!::MoveFileExW(name_.c_str(), to.c_str(), kHow)) {
            const std::error_code error = LastError();
            place_.Old = OpenFile(place_.Name, GENERIC_READ | GENERIC_WRITE, OPEN_EXISTING);
            // The name is gone: somebody took the file for a left-over.
            if (error == std::errc::no_such_file_or_directory)
                return Made(std::errc::resource_unavailable_try_again);
            return error;
        }
    }
    name_.clear();
    return {};
}

}  // namespace zorvane
