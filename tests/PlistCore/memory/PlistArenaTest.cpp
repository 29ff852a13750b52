#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <thread>
#include <vector>

#include "PlistCore/memory/PlistArena.h"

namespace plist::detail {

namespace {

constexpr std::size_t blockSize = PlistArena::blockSize;

struct Release {
    void operator()(PlistArena* arena) const noexcept { arena->release(); }
};
using ArenaShare = std::unique_ptr<PlistArena, Release>;

ArenaShare make(std::size_t expectedSize) {
    return ArenaShare(PlistArena::make(expectedSize));
}

/// An object in an arena, filled with a byte of its own.
struct Object {
    char* place;
    std::size_t size;
    char content;
};

class Objects {
public:
    explicit Objects(PlistArena& arena) : arena_(arena) {}

    char* add(std::size_t size) { return keep(static_cast<char*>(arena_.allocate(size)), size); }
    char* addText(std::size_t size) { return keep(arena_.allocateText(size), size); }

    /// Whether each object still has what it was filled with, which shows that none overlap, and
    /// tells its arena.
    void check() const {
        for (const Object& object : objects_) {
            EXPECT_EQ(PlistArena::of(object.place), &arena_);
            for (std::size_t index = 0; index < object.size; ++index) {
                ASSERT_EQ(object.place[index], object.content) << object.size << " at " << index;
            }
        }
    }

private:
    char* keep(char* place, std::size_t size) {
        const auto content = static_cast<char>(objects_.size() % 251 + 1);
        std::memset(place, content, size);
        objects_.push_back({place, size, content});
        return place;
    }

    PlistArena& arena_;
    std::vector<Object> objects_;
};

bool isAligned(const void* place) {
    return reinterpret_cast<std::uintptr_t>(place) % 8 == 0;
}

TEST(PlistArenaTest, handsOutAlignedValuesAndTexts) {
    const ArenaShare arena = make(0);
    Objects objects(*arena);
    for (std::size_t turn = 0; turn < 3000; ++turn) {
        EXPECT_TRUE(isAligned(objects.add(turn % 50 * 8)));
        objects.addText(turn % 77 + 1);
    }
    objects.check();
}

TEST(PlistArenaTest, keepsObjectsApartWhateverTheirSize) {
    // Around a quarter of a block, from where on objects get blocks of their own, and around one
    // and several blocks.
    const ArenaShare arena = make(3 * blockSize);
    Objects objects(*arena);
    for (const std::size_t size :
         {std::size_t{8}, blockSize / 4 - 8, blockSize / 4, blockSize / 4 + 8, blockSize - 32,
          blockSize - 24, blockSize - 16, blockSize, blockSize + 8, 5 * blockSize}) {
        EXPECT_TRUE(isAligned(objects.add(size)));
        objects.addText(size + 3);
        objects.add(16);
        objects.addText(5);
    }
    objects.check();
}

TEST(PlistArenaTest, growsByFurtherRegions) {
    const ArenaShare arena = make(0);
    Objects objects(*arena);
    for (int turn = 0; turn < 100; ++turn) {
        objects.add(blockSize / 4);
        objects.addText(blockSize / 5);
    }
    objects.check();
    EXPECT_GE(arena->valueBound(), 100 * (blockSize / 4 + blockSize / 5) / 16);
}

TEST(PlistArenaTest, refusesImpossibleSizes) {
    const ArenaShare arena = make(0);
    EXPECT_THROW(arena->allocate(SIZE_MAX - 7), std::bad_alloc);
    EXPECT_THROW(arena->allocateText(SIZE_MAX), std::bad_alloc);
    EXPECT_THROW(arena->allocateText(SIZE_MAX / 2), std::bad_alloc);
    EXPECT_THROW(PlistArena::make(SIZE_MAX / 2 + blockSize), std::bad_alloc);
    // It is as usable as before.
    Objects objects(*arena);
    objects.add(64);
    objects.check();
}

TEST(PlistArenaTest, takesBackTheEndOfTheLastObject) {
    const ArenaShare arena = make(0);
    char* first = static_cast<char*>(arena->allocate(160));
    arena->shrinkLast(first, 160, 40);
    char* second = static_cast<char*>(arena->allocate(8));
    EXPECT_EQ(second, first + 40);
    // Not the last one any more.
    arena->shrinkLast(first, 40, 0);
    EXPECT_EQ(arena->allocate(8), second + 8);
    // In blocks of its own nothing can be given back.
    char* large = static_cast<char*>(arena->allocate(blockSize));
    arena->shrinkLast(large, blockSize, 8);
    EXPECT_EQ(arena->allocate(8), second + 16);
}

TEST(PlistArenaTest, livesUntilItsLastShareIsGivenBack) {
    PlistArena* arena = PlistArena::make(0);
    Objects objects(*arena);
    objects.add(64);
    arena->retain();
    arena->retain();
    arena->release();
    arena->release();
    objects.check();
    arena->release();
}

TEST(PlistArenaTest, remembersThatContainersAreShared) {
    const ArenaShare arena = make(0);
    EXPECT_FALSE(arena->sharesContainers());
    arena->noteSharedContainer();
    EXPECT_TRUE(arena->sharesContainers());
    // The pool gives out memory that was used, but nothing that was said about it.
    const ArenaShare next = make(0);
    EXPECT_FALSE(next->sharesContainers());
}

TEST(PlistArenaTest, usesTheMemoryOfSmallDocumentsAgain) {
    // More than the pool holds, then all of them again.
    for (int round = 0; round < 3; ++round) {
        std::vector<ArenaShare> arenas;
        for (int number = 0; number < 8; ++number) {
            arenas.push_back(make(100));
            Objects objects(*arenas.back());
            objects.add(800);
            objects.addText(801);
            objects.check();
            EXPECT_FALSE(arenas.back()->sharesContainers());
            arenas.back()->noteSharedContainer();
        }
    }
    PlistArena* before = PlistArena::make(0);
    before->release();
    const ArenaShare after = make(0);
    EXPECT_EQ(after.get(), before);
}

TEST(PlistArenaTest, makesAndFreesFromSeveralThreads) {
    std::vector<std::thread> threads;
    for (int number = 0; number < 4; ++number) {
        threads.emplace_back([] {
            for (int turn = 0; turn < 200; ++turn) {
                const ArenaShare arena = make(0);
                Objects objects(*arena);
                objects.add(800);
                objects.addText(15);
                objects.check();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

#if defined(__SANITIZE_ADDRESS__)

// What AddressSanitizer says.
constexpr const char* report = "use-after-poison";

char touch(const char* place) {
    return *static_cast<const volatile char*>(place);
}

TEST(PlistArenaDeathTest, reportsStepsPastWhatWasHandedOut) {
    const ArenaShare arena = make(0);
    const char* values = static_cast<char*>(arena->allocate(16));
    const char* text = arena->allocateText(16);
    EXPECT_DEATH(static_cast<void>(touch(values + 16)), report);
    EXPECT_DEATH(static_cast<void>(touch(text - 1)), report);
    // The next object may lie there.
    arena->allocate(8);
    EXPECT_EQ(touch(values + 16), 0);
}

TEST(PlistArenaDeathTest, reportsStepsPastLargeObjects) {
    const ArenaShare arena = make(0);
    const char* large = static_cast<char*>(arena->allocate(blockSize));
    EXPECT_EQ(touch(large + blockSize - 1), 0);
    EXPECT_DEATH(static_cast<void>(touch(large + blockSize)), report);
}

TEST(PlistArenaDeathTest, reportsWhatWasGivenBack) {
    const ArenaShare arena = make(0);
    char* place = static_cast<char*>(arena->allocate(160));
    arena->shrinkLast(place, 160, 40);
    EXPECT_EQ(touch(place + 39), 0);
    EXPECT_DEATH(static_cast<void>(touch(place + 40)), report);
}

TEST(PlistArenaDeathTest, reportsWhatOutlivesItsDocument) {
    PlistArena* arena = PlistArena::make(0);
    const char* text = arena->allocateText(16);
    arena->release();
    EXPECT_DEATH(static_cast<void>(touch(text)), report);
}

#endif

}  // namespace

}  // namespace plist::detail
