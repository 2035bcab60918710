#include "zorvane/runtime/detail/FileReplacement.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

#include "zorvane/runtime/detail/SystemFile.h"

namespace zorvane {
namespace {

using Bytes = std::span<const std::byte>;
using Naming = NewFile::Naming;

constexpr std::size_t kChunk = 64 * 1024;
// The words that tell whether a stream follows; written last where a file is written in place.
constexpr std::size_t kMarker = 4;
// A longer rest behind the new words is not copied: nobody waits for a gigabyte of somebody else's.
constexpr std::uint64_t kLongestTail = std::uint64_t{64} << 20;
// Each further one needs another process in between, at just that moment.
constexpr int kTries = 10;

// Whether nothing is to be written.
bool HoldsAlready(const SavePlace& place, Bytes bytes, OldTail tail) {
    if (place.OldSize < bytes.size()) return false;
    if (tail == OldTail::Cut && place.OldSize != bytes.size()) return false;
    std::vector<std::byte> chunk(std::min(kChunk, bytes.size()));
    for (std::size_t at = 0; at < bytes.size(); at += chunk.size()) {
        const Bytes wanted = bytes.subspan(at, std::min(chunk.size(), bytes.size() - at));
        const std::span<std::byte> found = std::span(chunk).first(wanted.size());
        std::size_t got = 0;
        if (place.Old.ReadAt(found, at, got) || got != found.size()) return false;
        if (!std::ranges::equal(found, wanted)) return false;
    }
    return true;
}

// All of the bytes or a failure.
std::error_code ReadAll(const SystemFile& file, std::span<std::byte> bytes, std::uint64_t offset) {
    std::size_t got = 0;
    if (const std::error_code error = file.ReadAt(bytes, offset, got)) return error;
    // Somebody has just made the file shorter.
    if (got != bytes.size()) return std::make_error_code(std::errc::resource_unavailable_try_again);
    return {};
}

std::error_code CopyTail(const SavePlace& place, std::uint64_t from, const SystemFile& to) {
    if (place.OldSize <= from) return {};
    const auto piece = [&](std::uint64_t at) {
        return static_cast<std::size_t>(std::min<std::uint64_t>(kChunk, place.OldSize - at));
    };
    std::vector<std::byte> chunk(piece(from));
    for (std::uint64_t at = from; at < place.OldSize; at += chunk.size()) {
        const std::span<std::byte> bytes = std::span(chunk).first(piece(at));
        if (const std::error_code error = ReadAll(place.Old, bytes, at)) return error;
        if (const std::error_code error = to.WriteAt(bytes, at)) return error;
    }
    return {};
}

std::error_code Replace(SavePlace& place, Bytes bytes, OldTail tail, Naming naming) {
    NewFile fresh(place);
    if (const std::error_code error = fresh.Create(naming)) return error;
    if (const std::error_code error = fresh.KeepAttributes()) return error;
    const SystemFile& file = fresh.File();
    const std::uint64_t stays = tail == OldTail::Stays ? place.OldSize : 0;
    if (const std::error_code error = file.Reserve(std::max<std::uint64_t>(bytes.size(), stays)))
        return error;
    if (const std::error_code error = file.WriteAt(bytes, 0)) return error;
    if (stays != 0) {
        if (const std::error_code error = CopyTail(place, bytes.size(), file)) return error;
    }
    if (const std::error_code error = file.Sync()) return error;
    return fresh.TakePlace();
}

// A failure that speaks of the place and not of the disk: another way of saving may work.
bool AnotherWayMayDo(const std::error_code& error) noexcept {
    for (const std::errc place :
         {std::errc::cross_device_link, std::errc::device_or_resource_busy,  // a mount point
          std::errc::operation_not_permitted, std::errc::operation_not_supported,
          std::errc::permission_denied}) {
        if (error == place) return true;
    }
    return false;
}

// Until the last write the file begins with zeros: what a crash leaves is no stream.
std::error_code WriteMarkerLast(const SystemFile& file, Bytes bytes) noexcept {
    constexpr std::array<std::byte, kMarker> kNothing{};
    const std::size_t marker = std::min(kMarker, bytes.size());
    const auto write = [&file](Bytes part, std::uint64_t offset) {
        const std::error_code error = file.WriteAt(part, offset);
        return error ? error : file.Sync();
    };
    if (const std::error_code error = write(Bytes(kNothing).first(marker), 0)) return error;
    if (const std::error_code error = write(bytes.subspan(marker), marker)) return error;
    return write(bytes.first(marker), 0);
}

std::error_code WriteInPlace(SavePlace& place, Bytes bytes, OldTail tail) {
    const SystemFile& file = place.Old;
    if (!file.Await(SystemFile::Turn::Write))
        return std::make_error_code(std::errc::device_or_resource_busy);
    if (const std::error_code error = place.LookAgain()) return error;
    std::vector<std::byte> before(
        static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), place.OldSize)));
    if (const std::error_code error = ReadAll(file, before, 0)) return error;
    std::error_code failure = file.Reserve(bytes.size());
    if (!failure) {
        failure = WriteMarkerLast(file, bytes);
        if (!failure && tail == OldTail::Cut) {
            failure = file.Truncate(bytes.size());
            if (!failure) return file.Sync();
        }
        if (!failure) return {};
        (void)WriteMarkerLast(file, before);
    }
    if (place.OldSize < bytes.size()) (void)file.Truncate(place.OldSize);
    (void)file.Sync();
    return failure;
}

std::error_code SaveOnce(const std::filesystem::path& path, Bytes bytes, OldTail tail) {
    SavePlace place;
    if (const std::error_code error = place.Open(path)) return error;
    place.RemoveLeftOvers();
    if (place.Old && HoldsAlready(place, bytes, tail)) return {};
    std::error_code error;
    const bool copiesMuch = tail == OldTail::Stays && place.OldSize > bytes.size() + kLongestTail;
    if (!place.OldStays && !copiesMuch) {
        error = Replace(place, bytes, tail, Naming::None);
        if (error == std::errc::operation_not_supported)
            error = Replace(place, bytes, tail, Naming::Temporary);
        if (!error) return place.Settle();
        if (!AnotherWayMayDo(error)) return error;
    }
    return place.Old ? WriteInPlace(place, bytes, tail) : error;
}

}  // namespace

std::error_code MaySaveOverFile(const std::filesystem::path& path) {
    SavePlace place;
    if (const std::error_code error = place.Open(path)) return error;
    return place.Old ? std::error_code() : place.MayAdd();
}

std::error_code SaveOverFile(const std::filesystem::path& path, std::span<const std::byte> bytes,
                             OldTail tail) {
    std::error_code error = SaveOnce(path, bytes, tail);
    for (int i = 1; i < kTries && error == std::errc::resource_unavailable_try_again; ++i)
        error = SaveOnce(path, bytes, tail);
    return error;
}

}  // namespace zorvane
