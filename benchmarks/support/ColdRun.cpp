#include "benchmarks/support/ColdRun.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace {

int complainAboutUse(const char* program, const std::map<std::string_view, ColdRun::Subject>& all) {
    std::cerr << "usage: " << program << " SUBJECT DOCUMENT\nsubjects:";
    for (const auto& [name, subject] : all) {
        std::cerr << ' ' << name;
    }
    std::cerr << '\n';
    return EXIT_FAILURE;
}

}  // namespace

int ColdRun::run(int argc, char** argv, const std::map<std::string_view, Subject>& subjects) {
    const auto subject = argc == 3 ? subjects.find(argv[1]) : subjects.end();
    if (subject == subjects.end()) {
        return complainAboutUse(argv[0], subjects);
    }
    try {
        std::cout << subject->second(documentAt(argv[2])) << '\n';
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::cerr << argv[2] << ", " << argv[1] << ": " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}

ColdRun::Document ColdRun::documentAt(const std::filesystem::path& path) {
    Document document{path.string() + ".xml", path.string() + ".binary", {}};
    std::ifstream stream(path.string() + ".census");
    if (!(stream >> document.census)) {
        throw std::runtime_error("there is no such document");
    }
    return document;
}

void ColdRun::check(bool holds, const char* complaint) {
    if (!holds) {
        throw std::logic_error(complaint);
    }
}
