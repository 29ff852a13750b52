#include <gtest/gtest.h>

#include "PlistCore/text/ByteBlock.h"
#include "tests/PlistCore/support/ByteBlockContract.h"

namespace plist::detail {

TEST(ByteBlockTest, knowsEveryByteAtEveryPlace) {
    ByteBlockContract::checkEveryByte<ByteBlock>();
}

TEST(ByteBlockTest, copies) {
    ByteBlockContract::checkCopies<ByteBlock>();
}

TEST(ByteBlockTest, widensAndNarrowsUnits) {
    ByteBlockContract::checkUnits<ByteBlock>();
}

}  // namespace plist::detail
