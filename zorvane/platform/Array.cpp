#include "zorvane/platform/Array.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <set>
#include <span>
#include <utility>

#include "zorvane/platform/Error.h"
#include "zorvane/platform/LargeBlock.h"
#include "zorvane/platform/SharedCount.h"
#include "zorvane/platform/Variant.h"

namespace zorvane {

struct alignas(8) Array::Block {
    SharedCount<std::uint32_t> references;
    VarType element;
    std::int32_t lower;
    std::int32_t count;
    Block* next;  // among those about to go

    void* Data() noexcept { return this + 1; }
};

namespace {

bool IsCounted(VarType element) noexcept {
    return element == VarType::String || element == VarType::Object || element == VarType::Variant;
}

}  // namespace

std::size_t ArrayElementSize(VarType element) noexcept {
    switch (element) {
        case VarType::String:
            return sizeof(Text);
        case VarType::Object:
            return sizeof(Ref<Object>);
        case VarType::Variant:
            return sizeof(Variant);
        case VarType::Decimal:
            return sizeof(Decimal);
        default:
            return ScalarWidth(element);
    }
}

Array::Block* Array::Allocate(VarType element, std::int32_t lower, std::int32_t count,
                              bool zeroed) {
    const std::size_t size = ArrayElementSize(element);
    if (size == 0) RaisePlatform(PlatformError::InvalidCall);
    const std::int64_t upper = std::int64_t{lower} + count - 1;
    // An array of no elements at the very first position would have no upper bound at all.
    if (count < 0 || upper > std::numeric_limits<std::int32_t>::max() ||
        upper < std::numeric_limits<std::int32_t>::min()) {
        RaisePlatform(PlatformError::OutOfRange);
    }
    const std::size_t bytes = size * static_cast<std::size_t>(count);
    auto* block = static_cast<Block*>(AllocateBlock(sizeof(Block) + bytes));
    new (block) Block{SharedCount(1u), element, lower, count, nullptr};
    // All-zero bytes are the empty value of every element type.
    if (zeroed || IsCounted(element)) std::memset(block->Data(), 0, bytes);
    return block;
}

Array::Array(VarType element, std::int32_t lower, std::int32_t count)
    : block_(Allocate(element, lower, count, true)) {}

Array Array::Uninitialised(VarType element, std::int32_t lower, std::int32_t count) {
    Array made;
    made.block_ = Allocate(element, lower, count, false);
    return made;
}

Array Array::OfWords(std::span<const std::int16_t> words) {
    if (words.size() > std::numeric_limits<std::int32_t>::max()) {
        RaisePlatform(PlatformError::OutOfRange);
    }
    Array made = Uninitialised(VarType::Integer, 0, static_cast<std::int32_t>(words.size()));
    if (!words.empty()) std::memcpy(made.block_->Data(), words.data(), words.size_bytes());
    return made;
}

Array::Array(const Array& other) noexcept : block_(other.block_) {
    if (block_) block_->references.Add();
}

Array::~Array() {
    if (!block_ || block_->references.Take() != 0) return;
    // Arrays within arrays queue up here: freed by recursion, a deep nest would exhaust the stack.
    Block* dying = block_;
    while (dying) {
        Block* const block = std::exchange(dying, dying->next);
        if (block->element == VarType::Variant) {
            for (Variant& value : std::span(static_cast<Variant*>(block->Data()),
                                            static_cast<std::size_t>(block->count))) {
                Block* const inner = LastReferenceOf(value);
                if (inner) inner->next = std::exchange(dying, inner);
            }
        }
        Free(block);
    }
}

// Takes an array out of a value: its block where nobody else holds it, null otherwise.
Array::Block* Array::LastReferenceOf(Variant& value) noexcept {
    if (!value.IsArray()) return nullptr;
    Array taken = value.AsArray();
    value = Variant();
    return taken.IsShared() ? nullptr : std::exchange(taken.block_, nullptr);
}

void Array::Free(Block* block) noexcept {
    const auto destroyAs = [&]<class T>(T* elements) { std::destroy_n(elements, block->count); };
    switch (block->element) {
        case VarType::String:
            destroyAs(static_cast<Text*>(block->Data()));
            break;
        case VarType::Object:
            destroyAs(static_cast<Ref<Object>*>(block->Data()));
            break;
        case VarType::Variant:
            destroyAs(static_cast<Variant*>(block->Data()));
            break;
        default:
            break;
    }
    const auto bytes = ArrayElementSize(block->element) * static_cast<std::size_t>(block->count);
    FreeBlock(block, sizeof(Block) + bytes);
}

Variant Array::At(std::int32_t index) const {
    if (!block_ || index < LowerBound() || index > UpperBound()) {
        RaisePlatform(PlatformError::OutOfRange);
    }
    const auto at = static_cast<std::size_t>(std::int64_t{index} - LowerBound());
    switch (block_->element) {
        case VarType::String:
            return Elements<Text>()[at];
        case VarType::Object:
            return Elements<Ref<Object>>()[at];
        case VarType::Variant:
            return Elements<Variant>()[at];
        case VarType::Decimal:
            return Variant::FromDecimal(Elements<Decimal>()[at]);
        default:
            break;
    }
    const std::size_t size = ElementSize();
    std::uint64_t bits = 0;
    auto* const low = reinterpret_cast<std::byte*>(&bits) +
                      (std::endian::native == std::endian::big ? sizeof bits - size : 0);
    std::memcpy(low, static_cast<const std::byte*>(Data()) + at * size, size);
    return Variant::FromScalarBits(block_->element, bits);
}

std::span<const std::byte> Array::Bytes() const {
    if (!block_ || IsCounted(block_->element)) RaisePlatform(PlatformError::TypeMismatch);
    return {static_cast<const std::byte*>(Data()),
            static_cast<std::size_t>(Count()) * ElementSize()};
}

std::int32_t Array::Count() const noexcept {
    return block_ ? block_->count : 0;
}

const void* Array::Data() const noexcept {
    return block_ ? block_->Data() : nullptr;
}

std::size_t Array::ElementSize() const noexcept {
    return ArrayElementSize(ElementType());
}

VarType Array::ElementType() const noexcept {
    return block_ ? block_->element : VarType::Empty;
}

bool Array::IsShared() const noexcept {
    return block_ && block_->references.Now() != 1;
}

std::int32_t Array::LowerBound() const noexcept {
    return block_ ? block_->lower : 0;
}

std::span<std::byte> Array::MutableBytes() {
    const std::span<const std::byte> bytes = Bytes();
    Unshare();
    return {static_cast<std::byte*>(block_->Data()), bytes.size()};
}

void Array::SetAt(std::int32_t index, const Variant& value) {
    if (!block_ || index < LowerBound() || index > UpperBound()) {
        RaisePlatform(PlatformError::OutOfRange);
    }
    const auto at = static_cast<std::size_t>(std::int64_t{index} - LowerBound());
    const auto store = [&](auto converted) {
        MutableElements<decltype(converted)>()[at] = std::move(converted);
    };
    switch (block_->element) {
        case VarType::Integer:
            return store(value.ToInteger());
        case VarType::Long:
            return store(value.ToLong());
        case VarType::Single:
            return store(value.ToSingle());
        case VarType::Double:
            return store(value.ToDouble());
        case VarType::Currency:
            return store(value.ToCurrency());
        case VarType::Date:
            return store(value.ToDouble());
        case VarType::String:
            return store(value.ToText());
        case VarType::Object:
            return store(value.AsObject());
        case VarType::Error:
            return store(value.AsError());
        case VarType::Boolean:
            return store(static_cast<std::int16_t>(value.ToBoolean() ? -1 : 0));
        case VarType::Variant:
            return store(Variant(value));
        case VarType::Decimal:
            return store(value.AsDecimal());
        case VarType::Byte:
            return store(value.ToByte());
        default:
            return;
    }
}

void Array::Unshare() {
    if (!block_ || block_->references.Now() == 1) return;
    Array copy;
    copy.block_ = Allocate(block_->element, block_->lower, block_->count, false);
    const auto assign = [&]<class T>(std::span<const T> from) {
        std::ranges::copy(from, static_cast<T*>(copy.block_->Data()));
    };
    switch (block_->element) {
        case VarType::String:
            assign(Elements<Text>());
            break;
        case VarType::Object:
            assign(Elements<Ref<Object>>());
            break;
        case VarType::Variant:
            assign(Elements<Variant>());
            break;
        default:
            assign(Bytes());
            break;
    }
    std::swap(block_, copy.block_);
}

std::int32_t Array::UpperBound() const noexcept {
    return block_ ? static_cast<std::int32_t>(std::int64_t{block_->lower} + block_->count - 1) : -1;
}

std::span<const std::int16_t> Array::Words() const {
    if (ElementType() != VarType::Integer) RaisePlatform(PlatformError::TypeMismatch);
    return Elements<std::int16_t>();
}

// Arrays within arrays that are still to be compared wait in `inner`.
bool Array::SameButInner(const Array& left, const Array& right, std::vector<Pair>& inner) {
    if (left.block_ == right.block_) return true;
    if (left.ElementType() != right.ElementType() || left.Count() != right.Count() ||
        left.LowerBound() != right.LowerBound()) {
        return false;
    }
    const auto sameValue = [&](const Variant& one, const Variant& other) {
        if (!one.IsArray() || !other.IsArray()) return one == other;
        inner.emplace_back(&one.AsArray(), &other.AsArray());
        return true;
    };
    switch (left.ElementType()) {
        case VarType::String:
            return std::ranges::equal(left.Elements<Text>(), right.Elements<Text>());
        case VarType::Object:
            return std::ranges::equal(left.Elements<Ref<Object>>(), right.Elements<Ref<Object>>());
        case VarType::Variant:
            return std::ranges::equal(left.Elements<Variant>(), right.Elements<Variant>(),
                                      sameValue);
        case VarType::Decimal:
            return std::ranges::equal(left.Elements<Decimal>(), right.Elements<Decimal>());
        case VarType::Empty:
            return true;
        default:
            return std::ranges::equal(left.Bytes(), right.Bytes());
    }
}

// Not by recursion: a deep nest would exhaust the stack.
bool operator==(const Array& left, const Array& right) {
    std::vector<Array::Pair> inner;
    if (!Array::SameButInner(left, right, inner)) return false;
    // Only two that are both held more than once can meet again.
    std::set<std::pair<const void*, const void*>> met;
    while (!inner.empty()) {
        const auto [one, other] = inner.back();
        inner.pop_back();
        const bool shared = one->IsShared() && other->IsShared();
        // Inserted as the set's own type: a call told by ours would show our name in what a shared
        // library of someone else exports.
        if (shared && !met.insert({one->block_, other->block_}).second) continue;
        if (!Array::SameButInner(*one, *other, inner)) return false;
    }
    return true;
}

}  // namespace zorvane
