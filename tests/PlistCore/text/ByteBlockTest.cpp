#include <gtest/gtest.h>

#include "PlistCore/text/ByteBlock.h"
#include "tests/PlistCore/support/ByteBlockContract.h"

namespace plist::detail {

TEST(ByteBlock, KnowsEveryByteAtEveryPlace) {
    ByteBlockContract::checkEveryByte<ByteBlock>();
}

TEST(ByteBlock, Copies) {
    ByteBlockContract::checkCopies<ByteBlock>();
}

TEST(ByteBlock, WidensAndNarrowsUnits) {
    ByteBlockContract::checkUnits<ByteBlock>();
}

}  // namespace plist::detail
