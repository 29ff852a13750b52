#include "tests/support/TestProgram.h"

#include <cstdio>
#include <string_view>
#include <vector>

namespace {

struct Entry {
    const QMetaObject* testClass;
    TestProgram::Run run;
};

/// Made when the first class registers, in whatever order the files are initialized.
std::vector<Entry>& entries() {
    static std::vector<Entry> all;
    return all;
}

TestProgram::Run runOf(std::string_view name) {
    for (const Entry& entry : entries()) {
        if (entry.testClass->className() == name) {
            return entry.run;
        }
    }
    return nullptr;
}

}  // namespace

void TestProgram::add(const QMetaObject& testClass, Run run) {
    entries().push_back({&testClass, run});
}

int main(int argc, char** argv) {
    const TestProgram::Run run = argc > 1 ? runOf(argv[1]) : nullptr;
    if (run == nullptr) {
        std::fprintf(stderr, "usage: %s CLASS [ARGUMENT…]\nThe classes are:\n", argv[0]);
        for (const Entry& entry : entries()) {
            std::fprintf(stderr, "  %s\n", entry.testClass->className());
        }
        return 2;
    }
    argv[1] = argv[0];
    return run(argc - 1, argv + 1);
}
