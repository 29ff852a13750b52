#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include "PlistCore/PlistEntry.h"
#include "PlistCore/PlistValue.h"
#include "tests/PlistCore/support/DeepValues.h"
#include "tests/PlistCore/support/SmallStack.h"
#include "tests/PlistCore/support/ThrowingChecks.h"
#include "tests/PlistCore/support/ValueText.h"
#include "tests/PlistCore/support/XmlReading.h"

namespace plist {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Path = std::vector<std::int64_t>;

constexpr double infinity = std::numeric_limits<double>::infinity();

PlistValue sampleOf(PlistType type) {
    switch (type) {
        case PlistType::dictionary:
            return PlistValue::dictionary({{"key", PlistValue::boolean(true)}});
        case PlistType::array:
            return PlistValue::array({PlistValue::integer(1), PlistValue::integer(2)});
        case PlistType::string:
            return PlistValue::string("text");
        case PlistType::integer:
            return PlistValue::integer(-3);
        case PlistType::real:
            return PlistValue::real(1.5);
        case PlistType::boolean:
            return PlistValue::boolean(true);
        case PlistType::date:
            return PlistValue::date(60);
        case PlistType::data:
            return PlistValue::data(Bytes{1, 2, 3});
        case PlistType::uid:
            return PlistValue::uid(7);
    }
    return {};
}

Bytes numberedBytes(std::size_t count) {
    Bytes bytes(count);
    for (std::size_t index = 0; index < count; ++index) {
        bytes[index] = static_cast<std::uint8_t>(index * 7 + 1);
    }
    return bytes;
}

/// A dictionary from a file, so that it lies in an arena, with keys in place and out of line.
PlistValue readDictionary() {
    return xmlValue(
        "<dict><key>a</key><integer>1</integer>"
        "<key>a key that is longer than a cell</key><string>a text longer than a cell</string>"
        "<key>list</key><array><string>another text longer than a cell</string></array></dict>");
}

const char* const readDictionaryText =
    "{\"a\" = 1, \"a key that is longer than a cell\" = \"a text longer than a cell\", "
    "\"list\" = (\"another text longer than a cell\")}";

TEST(PlistValueTest, isSmallAndCheapToMove) {
    EXPECT_EQ(sizeof(PlistValue), 16U);
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<PlistValue>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<PlistValue>);
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<PlistValue>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<PlistValue>);
}

TEST(PlistValueTest, isAnEmptyDictionaryAtFirst) {
    EXPECT_EQ(valueText(PlistValue()), "{}");
    EXPECT_EQ(PlistValue(), PlistValue::dictionary());
    EXPECT_EQ(PlistValue(), PlistValue::dictionary(std::vector<PlistEntry>()));
}

TEST(PlistValueTest, knowsItsTypeAndItsChildren) {
    for (const PlistType type : allPlistTypes) {
        const PlistValue value = sampleOf(type);
        EXPECT_EQ(value.type(), type);
        EXPECT_EQ(value.isContainer(), type == PlistType::dictionary || type == PlistType::array);
        const std::size_t expected = type == PlistType::dictionary ? 1
                                     : type == PlistType::array    ? 2
                                                                   : 0;
        EXPECT_EQ(value.childCount(), expected) << displayName(type);
        EXPECT_EQ(value.children().size(), expected) << displayName(type);
        EXPECT_EQ(value.keys().size(), type == PlistType::dictionary ? 1U : 0U);
    }
    const PlistValue dictionary;
    EXPECT_EQ(dictionary.childCount(), 0U);
    EXPECT_TRUE(dictionary.children().empty());
    EXPECT_TRUE(dictionary.keys().empty());
    const PlistValue array = PlistValue::array();
    EXPECT_EQ(array.childCount(), 0U);
    EXPECT_TRUE(array.children().empty());
    EXPECT_EQ(array.type(), PlistType::array);
}

TEST(PlistValueTest, hasADefaultForEveryType) {
    const std::array<const char*, 9> texts = {
        "{}", "()", "\"\"", "0", "0.0", "false", "2001-01-01T00:00:00Z", "<>", "uid(0)"};
    for (std::size_t index = 0; index < texts.size(); ++index) {
        const PlistValue value = PlistValue::defaultValue(allPlistTypes.at(index));
        EXPECT_EQ(value.type(), allPlistTypes.at(index));
        EXPECT_EQ(valueText(value), texts.at(index));
        EXPECT_EQ(value, value);
    }
    EXPECT_FALSE(std::signbit(PlistValue::defaultValue(PlistType::real).realValue()));
    EXPECT_EQ(PlistValue::defaultValue(PlistType::date).dateValue(), 0);
    EXPECT_TRUE(PlistValue::defaultValue(PlistType::string).stringValue().isAscii());
    EXPECT_TRUE(PlistValue::defaultValue(PlistType::string)
                    .isIdenticalTo(PlistValue::string(PlistString())));
}

TEST(PlistValueTest, holdsEveryValidInteger) {
    const PlistInteger numbers[] = {0,
                                    1,
                                    -1,
                                    std::numeric_limits<std::int64_t>::max(),
                                    PlistInteger{std::numeric_limits<std::int64_t>::max()} + 1,
                                    leastPlistInteger,
                                    leastPlistInteger + 1,
                                    greatestPlistInteger - 1,
                                    greatestPlistInteger};
    for (const PlistInteger number : numbers) {
        const PlistValue value = PlistValue::integer(number);
        EXPECT_TRUE(value.integerValue() == number) << decimalText(number);
        EXPECT_EQ(value, PlistValue(value));
    }
    // The same 64 bits, and yet another number.
    EXPECT_NE(PlistValue::integer(-1), PlistValue::integer(greatestPlistInteger));
}

TEST(PlistValueTest, refusesIntegersOutOfRange) {
    const ThrowingChecks checks;
    EXPECT_THROW(PlistValue::integer(greatestPlistInteger + 1), BrokenRule);
    EXPECT_THROW(PlistValue::integer(leastPlistInteger - 1), BrokenRule);
}

TEST(PlistValueTest, holdsEveryDoubleAsRealAndDate) {
    for (const double number : {0.0, 1.5, -1e300, 5e-324, infinity, -infinity}) {
        EXPECT_EQ(PlistValue::real(number).realValue(), number);
        EXPECT_EQ(PlistValue::date(number).dateValue(), number);
    }
    EXPECT_TRUE(std::signbit(PlistValue::real(-0.0).realValue()));
    EXPECT_TRUE(std::isnan(PlistValue::real(std::nan("")).realValue()));
    EXPECT_TRUE(std::isnan(PlistValue::date(std::nan("")).dateValue()));
}

TEST(PlistValueTest, holdsEveryUid) {
    for (const std::uint64_t number : {std::uint64_t{0}, std::uint64_t{1} << 63, UINT64_MAX}) {
        EXPECT_EQ(PlistValue::uid(number).uidValue(), number);
    }
}

TEST(PlistValueTest, holdsDataInPlaceAndOutOfLine) {
    for (const std::size_t size : {0U, 1U, 13U, 14U, 15U, 16U, 17U, 1000U, 3000000U}) {
        const Bytes bytes = numberedBytes(size);
        const PlistValue value = PlistValue::data(bytes);
        const PlistValue copy = value;
        EXPECT_TRUE(std::ranges::equal(copy.dataValue(), bytes)) << size;
        const bool isInPlace = copy.dataValue().data() != value.dataValue().data();
        EXPECT_EQ(isInPlace, size <= 14) << size;
    }
}

TEST(PlistValueTest, holdsTextInPlaceAndOutOfLine) {
    for (const std::size_t size : {0U, 1U, 13U, 14U, 15U, 16U, 17U, 1000U, 3000000U}) {
        const std::string text(size, 'x');
        const PlistValue value = PlistValue::string(text);
        const PlistValue copy = value;
        EXPECT_EQ(copy.text(), text);
        EXPECT_EQ(copy.stringValue(), PlistString(text));
        EXPECT_EQ(copy.text().data() != value.text().data(), size <= 14) << size;
    }
}

TEST(PlistValueTest, stopsAtTheWrongAccessor) {
    const ThrowingChecks checks;
    for (const PlistType type : allPlistTypes) {
        const PlistValue value = sampleOf(type);
        const auto failsUnless = [&](PlistType wanted, auto read) {
            if (type == wanted) {
                EXPECT_NO_THROW(read());
            } else {
                EXPECT_THROW(read(), BrokenRule) << displayName(type);
            }
        };
        failsUnless(PlistType::string, [&] { static_cast<void>(value.stringValue()); });
        failsUnless(PlistType::string, [&] { static_cast<void>(value.text()); });
        failsUnless(PlistType::integer, [&] { static_cast<void>(value.integerValue()); });
        failsUnless(PlistType::real, [&] { static_cast<void>(value.realValue()); });
        failsUnless(PlistType::boolean, [&] { static_cast<void>(value.booleanValue()); });
        failsUnless(PlistType::date, [&] { static_cast<void>(value.dateValue()); });
        failsUnless(PlistType::data, [&] { static_cast<void>(value.dataValue()); });
        failsUnless(PlistType::uid, [&] { static_cast<void>(value.uidValue()); });
    }
}

TEST(PlistValueTest, keepsOrderAndRepeatedKeys) {
    const PlistValue value = PlistValue::dictionary({{"b", PlistValue::integer(1)},
                                                     {"a", PlistValue::integer(2)},
                                                     {"b", PlistValue::integer(3)},
                                                     {"", PlistValue::integer(4)}});
    EXPECT_EQ(valueText(value), "{\"b\" = 1, \"a\" = 2, \"b\" = 3, \"\" = 4}");
}

TEST(PlistValueTest, needsAsManyKeysAsValues) {
    const ThrowingChecks checks;
    EXPECT_THROW(PlistValue::dictionary({"a", "b"}, {PlistValue()}), BrokenRule);
    EXPECT_THROW(PlistValue::dictionary({}, {PlistValue()}), BrokenRule);
    EXPECT_THROW(PlistValue::dictionaryWithKeysOf(PlistValue(), {PlistValue()}), BrokenRule);
    EXPECT_THROW(PlistValue::dictionaryWithKeysOf(readDictionary(), {PlistValue()}), BrokenRule);
    EXPECT_EQ(PlistValue::dictionary({"a"}, {PlistValue()}),
              PlistValue::dictionary({{"a", PlistValue()}}));
    EXPECT_EQ(PlistValue::dictionaryWithKeysOf(PlistValue(), {}), PlistValue());
    // A value that is no dictionary has no keys.
    EXPECT_EQ(PlistValue::dictionaryWithKeysOf(PlistValue::integer(1), {}), PlistValue());
}

TEST(PlistValueTest, sharesTheKeysOfAnEditedDictionary) {
    PlistValue first = PlistValue::dictionary(
        {{"a", PlistValue()}, {"a key that is longer than a cell", PlistValue()}});
    PlistValue second = PlistValue::dictionaryWithKeysOf(
        first, {PlistValue::string("a text longer than a cell"), PlistValue::integer(2)});
    EXPECT_EQ(second.keys().data(), first.keys().data());
    first = PlistValue();
    PlistValue third = PlistValue::dictionaryWithKeysOf(second, {second, PlistValue()});
    second = PlistValue();
    EXPECT_EQ(valueText(third),
              "{\"a\" = {\"a\" = \"a text longer than a cell\", "
              "\"a key that is longer than a cell\" = 2}, "
              "\"a key that is longer than a cell\" = {}}");
}

TEST(PlistValueTest, sharesTheKeysOfADictionaryThatWasRead) {
    PlistValue first = readDictionary();
    PlistValue second = PlistValue::dictionaryWithKeysOf(
        first, {PlistValue::integer(1), PlistValue::integer(2), PlistValue::integer(3)});
    EXPECT_EQ(second.keys().data(), first.keys().data());
    first = PlistValue();
    EXPECT_EQ(valueText(second),
              "{\"a\" = 1, \"a key that is longer than a cell\" = 2, \"list\" = 3}");
}

TEST(PlistValueTest, keepsKeysThatWereReadThroughManyEdits) {
    // The items of the list lie right before the keys.
    PlistValue read = xmlValue(
        "<dict><key>a key that is longer than a cell</key><array><integer>1</integer>"
        "<integer>2</integer><integer>3</integer><integer>4</integer></array></dict>");
    const PlistString* keys = read.keys().data();
    PlistValue value = read;
    for (int turn = 0; turn < 5; ++turn) {
        value = PlistValue::dictionaryWithKeysOf(value, {PlistValue::integer(turn)});
        EXPECT_EQ(value.keys().data(), keys);
        EXPECT_EQ(valueText(read), "{\"a key that is longer than a cell\" = (1, 2, 3, 4)}");
    }
    // Now nothing but the keys holds the memory of the file, or this would get it.
    read = PlistValue();
    const PlistValue other = xmlValue(
        "<array><string>some text that is longer than a cell</string><integer>1</integer>"
        "<integer>2</integer><integer>3</integer><integer>4</integer></array>");
    EXPECT_EQ(valueText(value), "{\"a key that is longer than a cell\" = 4}");
}

TEST(PlistValueTest, copiesAreIndependentAndShared) {
    PlistValue original = sampleOf(PlistType::array);
    PlistValue copy = original;
    EXPECT_TRUE(copy.isIdenticalTo(original));
    EXPECT_EQ(copy.children().data(), original.children().data());
    original = PlistValue::integer(5);
    EXPECT_EQ(valueText(copy), "(1, 2)");
    EXPECT_EQ(valueText(original), "5");
    EXPECT_FALSE(copy.isIdenticalTo(original));
}

TEST(PlistValueTest, isIdenticalOnlyToItself) {
    const PlistValue array = sampleOf(PlistType::array);
    EXPECT_FALSE(array.isIdenticalTo(sampleOf(PlistType::array)));
    EXPECT_TRUE(PlistValue::integer(5).isIdenticalTo(PlistValue::integer(5)));
    EXPECT_FALSE(PlistValue::integer(5).isIdenticalTo(PlistValue::uid(5)));
    EXPECT_FALSE(PlistValue::real(0.0).isIdenticalTo(PlistValue::real(-0.0)));
    // Unlike equality this is about bits.
    const PlistValue notANumber = PlistValue::real(std::nan(""));
    EXPECT_TRUE(notANumber.isIdenticalTo(PlistValue(notANumber)));
}

TEST(PlistValueTest, survivesAssignmentToItself) {
    for (PlistValue value : {sampleOf(PlistType::array), readDictionary(),
                             PlistValue::string("a text longer than a cell")}) {
        const std::string text = valueText(value);
        PlistValue& alias = value;
        value = alias;
        EXPECT_EQ(valueText(value), text);
        value = std::move(alias);
        EXPECT_EQ(valueText(value), text);
    }
}

TEST(PlistValueTest, canBeAssignedFromItsOwnChild) {
    PlistValue value = chainOfArrays(3, readDictionary());
    for (int level = 0; level < 3; ++level) {
        value = value.children()[0];
    }
    EXPECT_EQ(valueText(value), readDictionaryText);
    value = value.children()[2];
    EXPECT_EQ(valueText(value), "(\"another text longer than a cell\")");
    value = value.children()[0];
    EXPECT_EQ(valueText(value), "\"another text longer than a cell\"");
}

TEST(PlistValueTest, isAnEmptyDictionaryOnceMoved) {
    PlistValue source = sampleOf(PlistType::array);
    const PlistValue target = std::move(source);
    EXPECT_EQ(valueText(target), "(1, 2)");
    // Callers may rely on it, so this looks at the moved value on purpose.
    EXPECT_EQ(valueText(source), "{}");  // NOLINT(bugprone-use-after-move)
}

TEST(PlistValueTest, findsWhatAPathLeadsTo) {
    const PlistValue value = PlistValue::dictionary(
        {{"a", PlistValue::array({PlistValue::string("x"), PlistValue::integer(5)})},
         {"a", PlistValue::dictionary({{"b", PlistValue::boolean(true)}})}});
    const auto textAt = [&value](const Path& path) {
        const auto found = value.value(path);
        return found ? valueText(*found) : "absent";
    };
    EXPECT_EQ(textAt({}), valueText(value));
    EXPECT_EQ(textAt({0}), "(\"x\", 5)");
    EXPECT_EQ(textAt({0, 1}), "5");
    EXPECT_EQ(textAt({1}), "{\"b\" = true}");
    EXPECT_EQ(textAt({1, 0}), "true");
    EXPECT_EQ(textAt({2}), "absent");
    EXPECT_EQ(textAt({-1}), "absent");
    EXPECT_EQ(textAt({0, 2}), "absent");
    EXPECT_EQ(textAt({0, 1, 0}), "absent");
    EXPECT_EQ(textAt({std::numeric_limits<std::int64_t>::max()}), "absent");
    EXPECT_EQ(textAt({std::numeric_limits<std::int64_t>::min()}), "absent");
    EXPECT_EQ(PlistValue().value(Path{0}), std::nullopt);
    EXPECT_EQ(PlistValue::integer(1).value(Path{}), PlistValue::integer(1));
    EXPECT_EQ(PlistValue::integer(1).value(Path{0}), std::nullopt);
}

TEST(PlistValueTest, outlivesTheDocumentItWasReadFrom) {
    PlistValue root = readDictionary();
    PlistValue list = *root.value(Path{2});
    PlistValue text = root.children()[1];
    PlistString key = root.keys()[1];
    const PlistString string = text.stringValue();
    root = PlistValue();
    EXPECT_EQ(valueText(list), "(\"another text longer than a cell\")");
    list = PlistValue();
    EXPECT_EQ(text.text(), "a text longer than a cell");
    text = PlistValue();
    EXPECT_EQ(key.view(), "a key that is longer than a cell");
    key = PlistString();
    EXPECT_EQ(string.view(), "a text longer than a cell");
}

TEST(PlistValueTest, mixesWhatWasReadWithWhatWasEdited) {
    PlistValue read = readDictionary();
    PlistValue mixed = PlistValue::array({read, PlistValue::array({read.children()[2]}), read});
    read = PlistValue();
    const std::string list = "(\"another text longer than a cell\")";
    EXPECT_EQ(valueText(mixed), "(" + std::string(readDictionaryText) + ", (" + list + "), " +
                                    readDictionaryText + ")");
    EXPECT_EQ(mixed, PlistValue(mixed));
}

TEST(PlistValueTest, isBuiltComparedAndFreedAtAnyDepth) {
    runOnSmallStack([] {
        constexpr std::size_t depth = 1000000;
        const PlistValue innermost = readDictionary();
        PlistValue left = chainOfArrays(depth, innermost);
        const PlistValue copy = left;
        const PlistValue right = chainOfArrays(depth, innermost);
        EXPECT_EQ(left, right);
        EXPECT_NE(left, chainOfArrays(depth, PlistValue::integer(1)));
        EXPECT_EQ(copy.expandedCount(), depth + 5);
        left = PlistValue();
        EXPECT_EQ(copy, right);
    });
}

TEST(PlistValueTest, freesDictionariesOfAnyDepth) {
    runOnSmallStack([] {
        PlistValue chain;
        for (int level = 0; level < 300000; ++level) {
            chain = PlistValue::dictionary({{"a key longer than a cell", std::move(chain)}});
        }
        PlistValue other = PlistValue::dictionaryWithKeysOf(chain, {chain});
        chain = PlistValue();
        EXPECT_EQ(other.expandedCount(), 300002U);
    });
}

TEST(PlistValueTest, isCopiedAndFreedFromSeveralThreads) {
    PlistValue read = readDictionary();
    PlistValue edited = PlistValue::dictionary(
        {{"a key longer than a cell", chainOfArrays(50, PlistValue::integer(1))}, {"b", read}});
    const auto work = [](PlistValue value, const std::string& expected) {
        for (int turn = 0; turn < 300; ++turn) {
            PlistValue copy = value;
            PlistValue child = copy.children().back();
            const PlistString key = copy.keys().front();
            const PlistValue wrapped = PlistValue::array({std::move(copy), child, child});
            ASSERT_EQ(wrapped.children()[0], value);
            ASSERT_EQ(wrapped.children()[0].keys().front(), key);
        }
        EXPECT_EQ(valueText(value), expected);
    };
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        const PlistValue& value = number % 2 == 0 ? read : edited;
        threads.emplace_back(work, value, valueText(value));
    }
    // The threads may hold the last shares.
    read = PlistValue();
    edited = PlistValue();
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace

}  // namespace plist
