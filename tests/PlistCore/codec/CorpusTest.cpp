// Reads real files of many programs, if there is a folder of them: its path is in TABULET_CORPUS.
//
// The folder holds a table SOURCES.tsv, whose first column names the files and whose column
// "expected" names the value that another program read from it, if there is one. Its folders xml,
// binary and openstep hold files to read, malformed those to refuse.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "PlistCore/PlistCodec.h"
#include "PlistCore/PlistError.h"
#include "tests/PlistCore/support/CanonicalDump.h"
#include "tests/PlistCore/support/TestFiles.h"
#include "tests/PlistCore/support/ValueDifference.h"

namespace plist {

namespace {

struct Entry {
    std::string name;      ///< relative to the corpus
    std::string expected;  ///< the file of the expected value, or empty
};

std::vector<std::string> splitAtTabs(const std::string& line) {
    std::vector<std::string> parts;
    std::istringstream stream(line);
    for (std::string part; std::getline(stream, part, '\t');) {
        parts.push_back(part);
    }
    return parts;
}

class CorpusTest : public testing::Test {
protected:
    void SetUp() override {
        // Tests run before any thread that could change the environment.
        const char* folder = std::getenv("TABULET_CORPUS");  // NOLINT(concurrency-mt-unsafe)
        if (folder == nullptr || *folder == '\0') {
            GTEST_SKIP() << "Reads real files of other makers, which are not part of the project: "
                            "only where TABULET_CORPUS names a folder of them.";
        }
        corpus_ = folder;
    }

    std::string bytesOf(const std::string& name) const { return readFile(corpus_ / name); }

    /// The files in one folder of the corpus, by the table.
    std::vector<Entry> entriesIn(std::string_view folder) const {
        std::istringstream table(readFile(corpus_ / "SOURCES.tsv"));
        std::string line;
        std::getline(table, line);
        const std::vector<std::string> columns = splitAtTabs(line);
        const auto expected = static_cast<std::size_t>(
            std::find(columns.begin(), columns.end(), "expected") - columns.begin());
        std::vector<Entry> entries;
        while (std::getline(table, line)) {
            const std::vector<std::string> parts = splitAtTabs(line);
            if (parts.at(0).starts_with(std::string(folder) + "/")) {
                const std::string& dump = parts.at(expected);
                entries.push_back({parts.at(0), dump == "-" ? "" : dump});
            }
        }
        return entries;
    }

    void readFolder(std::string_view folder, PlistFormat format) const {
        const std::vector<Entry> entries = entriesIn(folder);
        EXPECT_FALSE(entries.empty());
        std::map<Outcome, int> counts;
        for (const Entry& entry : entries) {
            SCOPED_TRACE(entry.name);
            ++counts[checkFile(entry, format)];
        }
        EXPECT_GT(counts[Outcome::compared], 0);
        std::cout << folder << ": " << entries.size() << " files, "
                  << counts[Outcome::read] + counts[Outcome::compared] << " read, "
                  << counts[Outcome::compared] << " of them compared with an expected value, "
                  << counts[Outcome::refused] << " refused\n";
    }

private:
    enum class Outcome { refused, read, compared };

    Outcome checkFile(const Entry& entry, PlistFormat format) const;

    std::filesystem::path corpus_;
};

constexpr std::string_view notUtf8 = "The text is not valid UTF-8.";
constexpr std::string_view badTrailer = "The binary property list trailer is invalid.";

/// Files that other readers take and this one refuses: old strings files in a character set of one
/// byte, which they do not name, and binary files with offsets of three bytes, a width that is no
/// power of two.
const std::map<std::string_view, std::string_view> refusedFiles = {
    {"openstep/Quicksilver__InfoPlist.strings", notUtf8},
    {"openstep/apps-gworkspace__Localizable.strings", notUtf8},
    {"binary/cocos2d-objc__elements", badTrailer},
    {"binary/cocos2d-objc__layout", badTrailer},
    {"binary/gap__keyedobjects.nib", badTrailer},
    {"binary/transmission__keyedobjects.nib", badTrailer},
};

/// Files that stand among the malformed ones because other readers refuse them.
const std::map<std::string_view, std::string_view> readableMalformedFiles = {
    {"malformed/Quicksilver__QSAction.commandFormat.strings",
     "UTF-16 that declares UTF-8: the byte-order mark says what it is"},
    {"malformed/growl__pt_BR.lproj__Localizable.strings",
     "ASCII that declares UTF-16: the declaration contradicts itself"},
};

/// What a value holds that does not come back from a form, as far as real files have it.
struct Losses {
    bool nan = false;            ///< unequal to itself: from no form
    bool dateFractions = false;  ///< cut off by the XML form
    bool uidLikeEntry = false;   ///< a dictionary that the XML form turns into a uid
};

bool isUidLike(const PlistValue& value) {
    return value.keys().size() == 1 && value.keys()[0].view() == "CF$UID" &&
           value.children()[0].type() == PlistType::integer;
}

Losses lossesOf(const PlistValue& root) {
    Losses losses;
    std::vector<PlistValue> left = {root};
    while (!left.empty()) {
        const PlistValue value = left.back();
        left.pop_back();
        if (value.type() == PlistType::real) {
            losses.nan |= std::isnan(value.realValue());
        } else if (value.type() == PlistType::date) {
            losses.dateFractions |= std::floor(value.dateValue()) != value.dateValue();
        }
        losses.uidLikeEntry |= isUidLike(value);
        left.insert(left.end(), value.children().begin(), value.children().end());
    }
    return losses;
}

PlistValue writtenAndRead(const PlistValue& value, PlistFormat format) {
    const PlistFile file = PlistCodec::read(PlistCodec::write(value, format).span());
    EXPECT_EQ(file.format, format);
    return file.root;
}

/// Whether a value comes back equal from both forms, and from the one after the other.
void checkRoundTrips(const std::string& name, const PlistValue& root) {
    const Losses losses = lossesOf(root);
    const PlistValue binary = writtenAndRead(root, PlistFormat::binary);
    EXPECT_EQ(firstDifference(root, binary), "");
    EXPECT_TRUE(root == binary || losses.nan);

    const PlistValue xml = writtenAndRead(root, PlistFormat::xml);
    if (losses.dateFractions || losses.uidLikeEntry) {
        std::cout << name << ": not the same as XML ("
                  << (losses.dateFractions ? "fractions of seconds" : "one-entry CF$UID") << ")\n";
        EXPECT_NE(firstDifference(root, xml), "");
        // What the XML form can say stays as it is from then on.
        EXPECT_EQ(firstDifference(xml, writtenAndRead(xml, PlistFormat::xml)), "");
        return;
    }
    EXPECT_EQ(firstDifference(root, xml), "");
    EXPECT_TRUE(root == xml || losses.nan);
}

CorpusTest::Outcome CorpusTest::checkFile(const Entry& entry, PlistFormat format) const {
    const auto refused = refusedFiles.find(entry.name);
    std::optional<PlistFile> file;
    try {
        file = PlistCodec::read(bytesOf(entry.name));
    } catch (const PlistError& error) {
        EXPECT_EQ(error.errorDescription(), refused == refusedFiles.end() ? "" : refused->second);
        return Outcome::refused;
    }
    EXPECT_TRUE(refused == refusedFiles.end());
    EXPECT_EQ(file->format, format);
    checkRoundTrips(entry.name, file->root);
    if (entry.expected.empty()) {
        return Outcome::read;
    }
    // The expected dates of binary files are rounded to microseconds.
    const double dateTolerance = format == PlistFormat::binary ? 1e-6 : 0;
    const PlistValue expected = CanonicalDump::read(bytesOf(entry.expected));
    EXPECT_EQ(firstDifference(expected, file->root, dateTolerance), "");
    return Outcome::compared;
}

TEST_F(CorpusTest, readsXml) {
    readFolder("xml", PlistFormat::xml);
}

TEST_F(CorpusTest, readsBinary) {
    readFolder("binary", PlistFormat::binary);
}

TEST_F(CorpusTest, readsOpenStep) {
    readFolder("openstep", PlistFormat::openStep);
}

TEST_F(CorpusTest, refusesMalformed) {
    const std::vector<Entry> entries = entriesIn("malformed");
    EXPECT_FALSE(entries.empty());
    for (const Entry& entry : entries) {
        SCOPED_TRACE(entry.name);
        try {
            PlistCodec::read(bytesOf(entry.name));
            EXPECT_TRUE(readableMalformedFiles.contains(entry.name));
        } catch (const PlistError& error) {
            std::cout << entry.name << ": " << error.errorDescription() << "\n";
            EXPECT_FALSE(readableMalformedFiles.contains(entry.name));
        }
    }
    std::cout << "malformed: " << entries.size() << " files\n";
}

}  // namespace

}  // namespace plist
