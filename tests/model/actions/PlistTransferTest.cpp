#include <QTest>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "app/model/actions/PlistTransfer.h"
#include "app/model/runtime/Plist.h"
#include "tests/model/support/TreeText.h"
#include "tests/support/TestProgram.h"

namespace {

using Representation = PlistTransfer::Representation;

constexpr NodeId greatestId = std::numeric_limits<NodeId>::max();

PlistValue string(std::string_view text) {
    return PlistValue::string(text);
}

/// "key: value" for each entry, then the ids.
QString textOf(const PlistTransfer& transfer) {
    QStringList lines;
    for (const PlistEntry& entry : transfer.entries) {
        const std::string_view key = entry.key.view();
        lines += QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())) +
                 QStringLiteral(": ") + TreeText::whole(entry.value);
    }
    QStringList ids;
    for (const NodeId id : transfer.sourceIDs) {
        ids += QString::number(id);
    }
    return lines.join(QLatin1String(", ")) + QStringLiteral(" / ") + ids.join(QLatin1Char(' '));
}

QByteArray xmlOf(const QByteArray& content) {
    return QByteArray(
               "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
               "<plist version=\"1.0\">\n")
        .append(content)
        .append("</plist>\n");
}

/// The binary form of an array, in Base64.
QByteArray plistOf(const std::vector<PlistValue>& items) {
    const PlistBytes bytes = PlistCodec::write(PlistValue::array(items), PlistFormat::binary);
    const std::string_view view = bytes.view();
    return QByteArray(view.data(), static_cast<qsizetype>(view.size())).toBase64();
}

/// The payload of the application's own form.
QByteArray payload(const QByteArray& ids, const QByteArray& keys, const QByteArray& plist) {
    return "{\"ids\":" + ids + ",\"keys\":" + keys + ",\"plist\":" + plist + "}";
}

QByteArray quoted(const QByteArray& text) {
    return "\"" + text + "\"";
}

/// What importing gives: the transfer, or the message of the error behind its kind.
QString outcome(Representation representation, const QByteArray& bytes) {
    try {
        return textOf(PlistTransfer::imported(representation, bytes));
    } catch (const TransferError& error) {
        return QStringLiteral("transfer: ") + error.message();
    } catch (const PlistError& error) {
        return QStringLiteral("plist: ") + QString::fromStdString(error.errorDescription());
    }
}

const QString invalid = QStringLiteral("transfer: Invalid dragged items.");

}  // namespace

class PlistTransferTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void prefersItsOwnForm() {
        QCOMPARE(PlistTransfer::nodesContentType(), QStringLiteral("com.ventrel.tabulet.nodes"));
        QVERIFY(PlistTransfer::representations.front() == Representation::nodes);
        QVERIFY(PlistTransfer::representations.back() == Representation::text);
    }

    void exportsItsOwnFormAsJson() {
        // The objects, the table of their offsets, and the trailer.
        const QByteArray plist =
            QByteArray("bplist00\xA1\x01\x09\x08\x0A", 13) + QByteArray::fromHex(
                                                                 "000000000000"
                                                                 "01"
                                                                 "01"
                                                                 "0000000000000002"
                                                                 "0000000000000000"
                                                                 "000000000000000b");
        const PlistTransfer transfer{{{"a", PlistValue::boolean(true)}}, {7}};
        QCOMPARE(transfer.exported(Representation::nodes),
                 payload("[7]", "[\"a\"]", quoted(plist.toBase64())));
    }

    void exportsAnEmptyTransfer() {
        const PlistTransfer empty;
        QCOMPARE(empty.exported(Representation::nodes), payload("[]", "[]", quoted(plistOf({}))));
        QCOMPARE(empty.exported(Representation::xml), xmlOf("<array/>\n"));
        QCOMPARE(textOf(PlistTransfer::imported(Representation::nodes,
                                                empty.exported(Representation::nodes))),
                 QStringLiteral(" / "));
        QCOMPARE(outcome(Representation::xml, empty.exported(Representation::xml)),
                 QStringLiteral(" / "));
    }

    void escapesKeys() {
        std::string key = "\"\\/\b\t\n";
        key += '\0';
        key += "\x1F é 😀";
        const PlistTransfer transfer{{{key, PlistValue::boolean(true)}}, {1}};
        const QByteArray json = transfer.exported(Representation::nodes);
        QVERIFY(json.contains("[\"\\\"\\\\/\\u0008\\u0009\\u000a\\u0000\\u001f é 😀\"]"));
        const PlistTransfer back = PlistTransfer::imported(Representation::nodes, json);
        QCOMPARE(back.entries.front().key.view(), std::string_view(key));
    }

    void keepsIdsExactly() {
        // Doubles tell none of these from their neighbours.
        const PlistTransfer transfer{{{"", string("a")}, {"", string("b")}, {"", string("c")}},
                                     {greatestId, greatestId - 1, (NodeId{1} << 53) + 1}};
        const QByteArray json = transfer.exported(Representation::nodes);
        QVERIFY(json.startsWith(
            R"({"ids":[9223372036854775807,9223372036854775806,9007199254740993],)"));
        const PlistTransfer back = PlistTransfer::imported(Representation::nodes, json);
        QVERIFY(back.sourceIDs == transfer.sourceIDs);
    }

    void importsAnyOrderAndSpacing() {
        const QByteArray plist = quoted(plistOf({string("x"), PlistValue::integer(2)}));
        const QString expected = QStringLiteral("k: \"x\", : 2 / 5 6");
        QCOMPARE(outcome(Representation::nodes, payload("[5,6]", "[\"k\",\"\"]", plist)), expected);
        QCOMPARE(outcome(Representation::nodes,
                         "\n{ \"plist\" : " + plist +
                             ",\r\n\t\"other\" : {\"ids\": null}, \"keys\":[ \"\\u006b\" , \"\" ]"
                             " , \"ids\":[5 ,6 ] } "),
                 expected);
        // Some writers of JSON escape the slashes in Base64, and write whole numbers in other ways.
        QByteArray escaped = plist;
        escaped.replace("/", "\\/");
        QCOMPARE(outcome(Representation::nodes, payload("[5.0,0.6e1]", "[\"k\",\"\"]", escaped)),
                 expected);
    }

    void givesElementsWithoutKeysEmptyOnes() {
        const QByteArray plist = quoted(plistOf({string("x"), string("y")}));
        QCOMPARE(outcome(Representation::nodes, payload("[1,2]", "[]", plist)),
                 QStringLiteral(": \"x\", : \"y\" / 1 2"));
        QCOMPARE(outcome(Representation::nodes, payload("[1,2]", R"(["a"])", plist)),
                 QStringLiteral("a: \"x\", : \"y\" / 1 2"));
        QCOMPARE(outcome(Representation::nodes, payload("[1,2]", R"(["a","b","c"])", plist)),
                 QStringLiteral("a: \"x\", b: \"y\" / 1 2"));
    }

    void refusesWhatDoesNotHoldTogether_data() {
        QTest::addColumn<QByteArray>("json");
        const QByteArray three = quoted(plistOf({string("a"), string("b"), string("c")}));
        const QByteArray one = quoted(plistOf({string("a")}));
        const PlistBytes dictionary = PlistCodec::write(tree(R"({a: "b"})"), PlistFormat::xml);
        const std::string_view view = dictionary.view();
        const QByteArray noArray =
            quoted(QByteArray(view.data(), static_cast<qsizetype>(view.size())).toBase64());

        QTest::newRow("two ids, three values") << payload("[1,2]", R"(["","",""])", three);
        QTest::newRow("no ids, one value") << payload("[]", "[\"\"]", one);
        QTest::newRow("a dictionary") << payload("[1]", "[\"\"]", noArray);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no JSON") << QByteArray("ids");
        QTest::newRow("cut off") << payload("[1]", "[\"\"]", one).chopped(1);
        QTest::newRow("more behind it") << payload("[1]", "[\"\"]", one) + "x";
        QTest::newRow("an array") << "[" + payload("[1]", "[\"\"]", one) + "]";
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("no ids") << R"({"keys":[""],"plist":)" + one + "}";
        QTest::newRow("no keys") << R"({"ids":[1],"plist":)" + one + "}";
        QTest::newRow("no plist") << QByteArray(R"({"ids":[1],"keys":[""]})");
        QTest::newRow("a negative id") << payload("[-1]", "[\"\"]", one);
        QTest::newRow("an id too large") << payload("[9223372036854775808]", "[\"\"]", one);
        QTest::newRow("an id far too large") << payload("[1e300]", "[\"\"]", one);
        QTest::newRow("a fraction") << payload("[1.5]", "[\"\"]", one);
        QTest::newRow("a text as an id") << payload("[\"1\"]", "[\"\"]", one);
        QTest::newRow("true as an id") << payload("[true]", "[\"\"]", one);
        QTest::newRow("null as an id") << payload("[null]", "[\"\"]", one);
        QTest::newRow("ids without a list") << payload("1", "[\"\"]", one);
        QTest::newRow("keys without a list") << payload("[1]", "\"\"", one);
        QTest::newRow("a number as a key") << payload("[1]", "[1]", one);
        QTest::newRow("null as a key") << payload("[1]", "[null]", one);
        QTest::newRow("a list as plist") << payload("[1]", "[\"\"]", "[" + one + "]");
        QTest::newRow("null as plist") << payload("[1]", "[\"\"]", "null");
        QTest::newRow("no Base64") << payload("[1]", "[\"\"]", "\"?*!\"");
        QTest::newRow("no Base64 but Unicode") << payload("[1]", "[\"\"]", "\"字字\"");
    }

    void refusesWhatDoesNotHoldTogether() {
        QFETCH(const QByteArray, json);
        QCOMPARE(outcome(Representation::nodes, json), invalid);
    }

    void tellsWhyAPropertyListCannotBeRead() {
        const QByteArray broken = QByteArray("bplist00").toBase64();
        QCOMPARE(outcome(Representation::nodes, payload("[1]", "[\"\"]", quoted(broken))),
                 QStringLiteral("plist: The file ends unexpectedly."));
        const QByteArray text = "<plist><array>";
        const QString expected = outcome(Representation::xml, text);
        QVERIFY(expected.startsWith(QLatin1String("plist: ")));
        QCOMPARE(outcome(Representation::nodes, payload("[1]", "[\"\"]", quoted(text.toBase64()))),
                 expected);
    }

    void exportsOneDictionaryEntryAsADictionary() {
        const PlistTransfer transfer{{{"name", string("value")}}, {3}};
        const QByteArray xml =
            xmlOf("<dict>\n\t<key>name</key>\n\t<string>value</string>\n</dict>\n");
        QCOMPARE(transfer.exported(Representation::xml), xml);
        QCOMPARE(transfer.exported(Representation::text), xml);
    }

    void exportsOneArrayElementByItself() {
        const PlistTransfer transfer{{{"", string("value")}}, {3}};
        QCOMPARE(transfer.exported(Representation::xml), xmlOf("<string>value</string>\n"));
    }

    void exportsSeveralArrayElementsAsAnArray() {
        const PlistTransfer transfer{
            {{"", string("a")}, {"", PlistValue::integer(2)}, {"", PlistValue::array()}},
            {1, 2, 3}};
        const QByteArray xml = transfer.exported(Representation::xml);
        QCOMPARE(xml, xmlOf("<array>\n\t<string>a</string>\n\t<integer>2</integer>\n\t<array/>\n"
                            "</array>\n"));
        QCOMPARE(outcome(Representation::xml, xml), QStringLiteral(": \"a\", : 2, : [] / "));
    }

    void keepsEntriesWithEmptyAndRepeatedKeys() {
        const PlistTransfer transfer{{{"", string("a")}, {"k", string("b")}, {"k", string("c")}},
                                     {1, 2, 3}};
        const QByteArray xml = transfer.exported(Representation::xml);
        QCOMPARE(xml,
                 xmlOf("<dict>\n\t<key></key>\n\t<string>a</string>\n\t<key>k</key>\n"
                       "\t<string>b</string>\n\t<key>k</key>\n\t<string>c</string>\n</dict>\n"));
        QCOMPARE(outcome(Representation::text, xml),
                 QStringLiteral(": \"a\", k: \"b\", k: \"c\" / "));
    }

    void importsPropertyListsOfEveryForm() {
        QCOMPARE(outcome(Representation::text, "<plist><dict><key>a</key><true/></dict></plist>"),
                 QStringLiteral("a: true / "));
        QCOMPARE(outcome(Representation::text, "{ a = 1; b = (x, y); }"),
                 QStringLiteral("a: \"1\", b: [\"x\", \"y\"] / "));
        QCOMPARE(outcome(Representation::xml, QByteArray::fromBase64(plistOf({string("x")}))),
                 QStringLiteral(": \"x\" / "));
        QCOMPARE(outcome(Representation::xml, "<plist><integer>5</integer></plist>"),
                 QStringLiteral(": 5 / "));
    }

    void refusesTextThatIsNoPropertyList() {
        const QString result = outcome(Representation::text, "hello <world");
        QVERIFY2(result.startsWith(QLatin1String("plist: ")), qPrintable(result));
    }

    void takesOverIdsFromItsOwnFormAlone() {
        const PlistTransfer transfer{{{"a", string("x")}}, {9}};
        for (const Representation representation : PlistTransfer::representations) {
            const PlistTransfer back =
                PlistTransfer::imported(representation, transfer.exported(representation));
            const bool isOwn = representation == Representation::nodes;
            QCOMPARE(textOf(back),
                     isOwn ? QStringLiteral("a: \"x\" / 9") : QStringLiteral("a: \"x\" / "));
        }
    }

    /// What can be read is 512 containers deep; the array around the items makes it one more.
    void saysThatItemsAreTooDeep() {
        PlistValue deep = tree(R"(["x"])");
        for (int i = 1; i < 512; ++i) {
            deep = PlistValue::array({deep});
        }
        const PlistTransfer transfer{{{"", deep}}, {1}};
        QCOMPARE(outcome(Representation::nodes, transfer.exported(Representation::nodes)),
                 QStringLiteral("plist: The file nests more than 512 levels deep."));
        // By itself the item is not too deep.
        const PlistTransfer back =
            PlistTransfer::imported(Representation::xml, transfer.exported(Representation::xml));
        QVERIFY(PlistValue::array({back.entries.front().value}) == deep);
        const PlistTransfer less{{{"", deep.children().front()}}, {1}};
        QCOMPARE(textOf(PlistTransfer::imported(Representation::nodes,
                                                less.exported(Representation::nodes))),
                 textOf(less));
    }

    void saysThatItemsDescribeTooMuch() {
        PlistValue tower = string("x");
        for (int i = 0; i < 40; ++i) {
            tower = PlistValue::array({tower, tower});
        }
        const PlistTransfer transfer{{{"", tower}}, {1}};
        for (const Representation representation : PlistTransfer::representations) {
            try {
                transfer.exported(representation);
                QFAIL("2^40 values were written");
            } catch (const PlistError& error) {
                QVERIFY(std::holds_alternative<PlistError::InvalidValue>(error.reason()));
            }
        }
    }

    void carriesItemsOfEveryKindUnchanged() {
        std::mt19937 random(4);
        std::uniform_int_distribution<int> byte(0, 255);
        std::uniform_int_distribution<NodeId> id(0, greatestId);
        for (int round = 0; round < 200; ++round) {
            PlistTransfer transfer;
            for (int i = 0; i < round % 10; ++i) {
                std::vector<std::uint8_t> bytes(static_cast<std::size_t>(byte(random)));
                for (std::uint8_t& item : bytes) {
                    item = static_cast<std::uint8_t>(byte(random));
                }
                std::string key;
                for (int length = byte(random) / 10; length > 0; --length) {
                    key += static_cast<char>(byte(random) / 2);
                }
                transfer.entries.push_back({key, PlistValue::data(bytes)});
                transfer.sourceIDs.push_back(id(random));
            }
            const PlistTransfer back = PlistTransfer::imported(
                Representation::nodes, transfer.exported(Representation::nodes));
            QVERIFY(back.entries == transfer.entries);
            QVERIFY(back.sourceIDs == transfer.sourceIDs);
        }
    }

    void letsGoOfItsDocument() {
        const std::string longText = "a text that is too long to lie in place";
        const PlistBytes bytes =
            PlistCodec::write(PlistValue::dictionary(
                                  {{longText, string(longText)},
                                   {"b", PlistValue::data(std::vector<std::uint8_t>(10'000'000))}}),
                              PlistFormat::binary);
        const PlistValue root = PlistCodec::read(bytes.span()).root;
        PlistTransfer transfer{{{root.keys().front(), root.children().front()}, {"", {}}}, {1, 2}};
        QVERIFY(transfer.entries.front().value.cell().has(plist::detail::PlistCell::inArena));
        const QString before = textOf(transfer);
        transfer.detach();
        QCOMPARE(textOf(transfer), before);
        QVERIFY(!transfer.entries.front().value.cell().has(plist::detail::PlistCell::inArena));
        QVERIFY(!transfer.entries.front().key.cell().has(plist::detail::PlistCell::inArena));

        // Most of the document stays what it is.
        PlistTransfer whole{{{"", root.children().back()}}, {1}};
        whole.detach();
        QVERIFY(whole.entries.front().value.isIdenticalTo(root.children().back()));

        PlistTransfer empty;
        empty.detach();
        QCOMPARE(textOf(empty), QStringLiteral(" / "));
    }
};

const RegisteredTest<PlistTransferTest> registered;
#include "PlistTransferTest.moc"
