#include "app/desktop/files/ContentDigest.h"

#include <xxhash.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

#include "app/desktop/files/FileDescriptor.h"

namespace {

/// Large enough that calls of the system cost nothing, small enough for the cache.
constexpr std::size_t chunkSize = std::size_t{1} << 18;

struct FreeState {
    void operator()(XXH3_state_t* state) const { XXH3_freeState(state); }
};
using State = std::unique_ptr<XXH3_state_t, FreeState>;

State newState() {
    State state(XXH3_createState());
    if (state == nullptr || XXH3_128bits_reset(state.get()) != XXH_OK) {
        throw std::bad_alloc();
    }
    return state;
}

ContentDigest::Bytes canonical(const XXH128_hash_t& hash) {
    XXH128_canonical_t bytes;
    XXH128_canonicalFromHash(&bytes, hash);
    ContentDigest::Bytes result;
    static_assert(sizeof(bytes.digest) == sizeof(result));
    std::copy(std::begin(bytes.digest), std::end(bytes.digest), result.begin());
    return result;
}

}  // namespace

ContentDigest::ContentDigest() : ContentDigest(of({})) {}

ContentDigest ContentDigest::of(std::span<const std::uint8_t> bytes) {
    return ContentDigest(canonical(XXH3_128bits(bytes.data(), bytes.size())));
}

std::optional<ContentDigest> ContentDigest::ofOpenFile(const FileDescriptor& file) {
    const State state = newState();
    std::vector<std::uint8_t> chunk(chunkSize);
    for (;;) {
        const ssize_t count = file.read(chunk);
        if (count == 0) {
            return ContentDigest(canonical(XXH3_128bits_digest(state.get())));
        }
        if (count < 0) {
            return std::nullopt;
        }
        XXH3_128bits_update(state.get(), chunk.data(), static_cast<std::size_t>(count));
    }
}

QString ContentDigest::hex() const {
    const QByteArray bytes(reinterpret_cast<const char*>(bytes_.data()), qsizetype{byteCount});
    return QString::fromLatin1(bytes.toHex());
}

std::optional<ContentDigest> ContentDigest::fromHex(QStringView text) {
    const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
    if (bytes.size() != qsizetype{byteCount}) {
        return std::nullopt;
    }
    ContentDigest digest;
    std::copy(bytes.begin(), bytes.end(), digest.bytes_.begin());
    // Of what is not a digit, or more than was asked for, fromHex takes what it can.
    return digest.hex() == text ? std::optional(digest) : std::nullopt;
}
