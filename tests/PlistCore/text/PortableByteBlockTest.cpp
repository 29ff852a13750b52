#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "tests/PlistCore/support/ByteBlockContract.h"

// The same class as it is compiled for processors without SSE2, under a name of its own.
#undef __SSE2__
namespace portable {
#include "PlistCore/text/ByteBlock.h"
}  // namespace portable

namespace plist::detail {

TEST(PortableByteBlockTest, knowsEveryByteAtEveryPlace) {
    ByteBlockContract::checkEveryByte<portable::plist::detail::ByteBlock>();
}

TEST(PortableByteBlockTest, copies) {
    ByteBlockContract::checkCopies<portable::plist::detail::ByteBlock>();
}

TEST(PortableByteBlockTest, widensAndNarrowsUnits) {
    ByteBlockContract::checkUnits<portable::plist::detail::ByteBlock>();
}

}  // namespace plist::detail
