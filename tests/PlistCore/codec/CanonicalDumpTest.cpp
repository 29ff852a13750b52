#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>

#include "tests/PlistCore/support/CanonicalDump.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

std::string dumped(std::string_view json) {
    return valueText(CanonicalDump::read(json));
}

TEST(CanonicalDumpTest, readsEveryType) {
    EXPECT_EQ(dumped(R"({"t":"dict","v":[["k",{"t":"string","v":"\u00e4\n\ud83d\ude00"}],)"
                     R"(["k",{"t":"array","v":[{"t":"boolean","v":true},{"t":"dict","v":[]}]}]]})"),
              "{\"k\" = \"ä\n😀\", \"k\" = (true, {})}");
    EXPECT_EQ(dumped(R"({"t":"integer","v":"-12"})"), "-12");
    EXPECT_EQ(dumped(R"({"t":"integer","v":"18446744073709551615"})"), "18446744073709551615");
    EXPECT_EQ(dumped(R"({"t":"real","v":"-0x1.8p+1"})"), "-3.0");
    EXPECT_EQ(dumped(R"({"t":"real","v":"-inf"})"), "-inf");
    EXPECT_EQ(dumped(R"({"t":"real","v":"nan"})"), "nan");
    EXPECT_EQ(dumped(R"({"t":"date","v":3600.5})"), "2001-01-01T01:00:00Z");
    EXPECT_EQ(dumped(R"({"t":"data","v":"AAH/"})"), "<0001ff>");
    EXPECT_EQ(dumped(R"({"t":"data","v":"QQ=="})"), "<41>");
    EXPECT_EQ(dumped(R"({"t":"uid","v":"7"})"
                     "\n"),
              "uid(7)");
}

TEST(CanonicalDumpTest, refusesOtherJson) {
    for (const std::string_view json :
         {"", "[]", R"({"t":"array","v":[)", R"({"t":"text","v":"a"})", R"({"t":"uid","v":"7"}x)",
          R"({"t":"string","v":"a)", R"({"t":"boolean","v":1})", R"({"t":"date","v":"1"})"}) {
        EXPECT_THROW(CanonicalDump::read(json), std::runtime_error) << json;
    }
}

}  // namespace

}  // namespace plist
