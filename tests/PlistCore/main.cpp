#include <gtest/gtest.h>

#include <clocale>

/// Takes over the locale of the environment, as a desktop program does: numbers must be read and
/// written the same way where the decimal point is a comma.
int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
