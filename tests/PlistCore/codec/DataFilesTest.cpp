#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistError.h"
#include "tests/PlistCore/support/TestFiles.h"
#include "tests/PlistCore/support/ValueDifference.h"
#include "tests/PlistCore/support/ValueText.h"

namespace plist {

namespace {

struct ReadableFile {
    std::string_view name;
    PlistFormat format;
    std::string_view value;
};

constexpr std::string_view allTypes =
    "{\"array\" = (\"first\", (), {}), \"boolean\" = true, \"data\" = <000102ff>, "
    "\"date\" = 2024-02-29T12:30:15Z, \"integer\" = -42, \"largest\" = 18446744073709551615, "
    "\"real\" = 0.25, \"string\" = \"Grüße & küsse 🌻\", \"uid\" = uid(7)}";

constexpr ReadableFile readableFiles[] = {
    {"allTypes.plist", PlistFormat::xml, allTypes},
    {"allTypes.binary.plist", PlistFormat::binary, allTypes},
    {"latin1.plist", PlistFormat::xml, "(\"Süßkirsche\", \"½ Pfund\")"},
    {"utf16.plist", PlistFormat::xml, "{\"Baum\" = \"Süßkirsche 🍒\"}"},
    {"legacyDoctype.plist", PlistFormat::xml, R"(("<raw> & text!", "", 31, 1000.0, false))"},
    {"garden.strings", PlistFormat::openStep,
     "{\"No plants in “%@”\" = \"Keine Pflanzen in „%@“\nLeg los!\", \"Open\" = \"Öffnen\", "
     "\"Quit\" = \"Beenden\", \"Sprout\" = \"Keimling 🌱\", \"Water\" = \"Water\"}"},
    {"garden.utf16.strings", PlistFormat::openStep, "{\"Rose\" = \"Rosé\", \"Tulip\" = \"🌷\"}"},
    {"empty.strings", PlistFormat::openStep, "{}"},
    {"windows.openstep", PlistFormat::openStep,
     "{\"*\" = {\"Icon\" = \"default.tiff\"}, "
     "\"Clock.WMClock\" = {\"Icon\" = \"clock face.png\", \"NoTitlebar\" = \"Yes\"}, "
     "\"Logo.Dock\" = {\"Colors\" = (\"#2e3436\", \"gray40\", \"rgb:50/5a/5e\"), "
     "\"Launch\" = \"/usr/bin/plan --new\", \"Lock\" = true, \"Number\" = 12, "
     "\"Picture\" = <4749463839610100>, \"Position\" = \"0,-3\", \"Scale\" = 1.5, "
     "\"Since\" = 2019-06-01T06:00:00Z}}"},
    {"project.openstep", PlistFormat::openStep,
     "{\"archiveVersion\" = \"1\", \"classes\" = {}, \"objects\" = {"
     "\"7A01B2C3D4E5F60718293A4B\" = {\"fileRef\" = \"7A01B2C3D4E5F60718293A4C\", "
     "\"isa\" = \"BuildFile\"}, "
     "\"7A01B2C3D4E5F60718293A4C\" = {\"isa\" = \"FileReference\", "
     "\"path\" = \"Sources/Plan.m\", \"sourceTree\" = \"<group>\"}}, "
     "\"rootObject\" = \"7A01B2C3D4E5F60718293A4D\", "
     "\"script\" = \"echo \"done\"\nexit 0\n\"}"},
};

struct BrokenFile {
    std::string_view name;
    std::string_view failure;
};

constexpr BrokenFile brokenFiles[] = {
    {"blank.plist", "The file is not a property list."},
    {"cut.plist", "Line 6, column 13: The file ends unexpectedly."},
    {"cut.binary.plist", "The binary property list trailer is invalid."},
    {"latin1.strings", "The text is not valid UTF-8."},
    {"mergeMark.openstep", "Expected a key or “}” at line 3, column 1."},
    {"missingValue.plist", "Line 8, column 1: The key “size” has no value."},
    {"prose.txt", "Unexpected content after the root value at line 1, column 7."},
};

std::string failureOf(std::string_view bytes) {
    try {
        PlistCodec::read(bytes);
    } catch (const PlistError& error) {
        return error.errorDescription();
    }
    return {};
}

TEST(DataFilesTest, readsFilesOfEveryKind) {
    for (const ReadableFile& file : readableFiles) {
        SCOPED_TRACE(file.name);
        const PlistFile read = PlistCodec::read(readFile(testDataFolder() / file.name));
        EXPECT_EQ(read.format, file.format);
        EXPECT_EQ(valueText(read.root), file.value);
    }
}

TEST(DataFilesTest, filesComeBackEqual) {
    for (const ReadableFile& file : readableFiles) {
        SCOPED_TRACE(file.name);
        const PlistValue root = PlistCodec::read(readFile(testDataFolder() / file.name)).root;
        for (const PlistFormat format : {PlistFormat::xml, PlistFormat::binary}) {
            const PlistFile again = PlistCodec::read(PlistCodec::write(root, format).span());
            EXPECT_EQ(again.format, format);
            EXPECT_EQ(again.root, root);
            EXPECT_EQ(firstDifference(root, again.root), "");
        }
    }
}

TEST(DataFilesTest, namesWhatIsWrongWithAFile) {
    for (const BrokenFile& file : brokenFiles) {
        EXPECT_EQ(failureOf(readFile(testDataFolder() / file.name)), file.failure) << file.name;
    }
}

// Text without braces is left out: its beginning is such a text too. So is "bplist0", a bare word.
TEST(DataFilesTest, everyPrefixFailsCleanly) {
    for (const ReadableFile& file : readableFiles) {
        if (file.format == PlistFormat::openStep) {
            continue;
        }
        const std::string bytes = readFile(testDataFolder() / file.name);
        const std::size_t first = file.format == PlistFormat::binary ? 8 : 0;
        // Line breaks at the end, and the second half of a wide one, are no part of the value.
        const std::size_t end = bytes.find_last_not_of(std::string_view("\n\0", 2)) + 1;
        const std::size_t last = file.format == PlistFormat::binary ? bytes.size() : end;
        for (std::size_t length = first; length < last; ++length) {
            EXPECT_NE(failureOf(std::string_view(bytes).substr(0, length)), "")
                << file.name << ", " << length << " bytes";
        }
    }
}

TEST(DataFilesTest, everyFileIsTested) {
    std::set<std::string> names;
    for (const ReadableFile& file : readableFiles) {
        names.emplace(file.name);
    }
    for (const BrokenFile& file : brokenFiles) {
        names.emplace(file.name);
    }
    for (const auto& entry : std::filesystem::directory_iterator(testDataFolder())) {
        const std::string name = entry.path().filename().string();
        if (entry.is_regular_file() && !name.starts_with('.')) {
            EXPECT_TRUE(names.contains(name)) << name;
        }
    }
}

}  // namespace

}  // namespace plist
