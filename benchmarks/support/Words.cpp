#include "benchmarks/support/Words.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 48> plainWords = {
    "window",  "column", "width",   "height",   "title",   "toolbar", "item",    "folder",
    "recent",  "open",   "close",   "document", "page",    "margin",  "font",    "color",
    "shadow",  "frame",  "origin",  "size",     "layer",   "name",    "label",   "value",
    "default", "state",  "enabled", "visible",  "order",   "index",   "count",   "version",
    "format",  "locale", "date",    "created",  "changed", "owner",   "group",   "path",
    "server",  "port",   "address", "account",  "search",  "filter",  "history", "language",
};

constexpr std::array<std::string_view, 24> foreignWords = {
    "öffnen", "Größe",    "Schließen", "über", "déjà",  "fenêtre", "créé",   "señal",
    "año",    "página",   "não",       "ação", "žádný", "soubor",  "πλάτος", "έγγραφο",
    "окно",   "документ", "ファイル",  "開く", "編集",  "文件",    "窗口",   "검색",
};

/// What makes a writer escape and a reader decode.
constexpr std::array<std::string_view, 3> marks = {"&", "<", ">"};

template <std::size_t count>
std::string_view pick(Random& random, const std::array<std::string_view, count>& words) {
    return words[random.below(count)];
}

void appendCapitalised(std::string& text, std::string_view word) {
    text.push_back(static_cast<char>(word.front() - 'a' + 'A'));
    text.append(word.substr(1));
}

template <std::size_t count>
std::string sentenceOf(Random& random, std::size_t bytes,
                       const std::array<std::string_view, count>& words) {
    std::string text(pick(random, words));
    while (text.size() < bytes) {
        text.push_back(' ');
        text.append(random.happens(2) ? pick(random, marks) : pick(random, words));
    }
    return text;
}

}  // namespace

std::string Words::plain(Random& random) {
    return std::string(pick(random, plainWords));
}

std::string Words::joined(Random& random) {
    std::string text = plain(random);
    appendCapitalised(text, pick(random, plainWords));
    if (random.happens(40)) {
        appendCapitalised(text, pick(random, plainWords));
    }
    return text;
}

std::string Words::sentence(Random& random, std::size_t bytes) {
    return sentenceOf(random, bytes, plainWords);
}

std::string Words::foreignSentence(Random& random, std::size_t bytes) {
    return sentenceOf(random, bytes, foreignWords);
}
