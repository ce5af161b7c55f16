// The companion library, loaded by name as a stranger would: nothing of its header is
// used, the three routines are found by dlsym and declared here.
#include <gtest/gtest.h>

#include <cstdint>
#include <dlfcn.h>
#include <vector>

namespace {

using XYToSerialFn = int32_t (*)(int32_t, int32_t, int32_t);
using SegToSerialFn = int32_t (*)(int32_t, int32_t, int32_t, int32_t, int32_t);
using BreakElvFn = void (*)(const int16_t*, int32_t, int32_t, int32_t, int16_t*);

constexpr int32_t Rms = 1;
constexpr int32_t Mean = 2;
constexpr int32_t Max = 3;

class Companion : public testing::Test {
protected:
    void SetUp() override {
        library_ = dlopen("libVardenix.so", RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library_, nullptr) << dlerror();
    }
    void TearDown() override {
        if (library_ != nullptr)
            dlclose(library_);
    }
    template <typename Fn>
    Fn Routine(const char* name) {
        void* address = dlsym(library_, name);
        EXPECT_NE(address, nullptr) << name;
        return reinterpret_cast<Fn>(address);
    }
    // Halves the 2 by 2 grid a b / c d to its one value.
    int16_t Break(int16_t a, int16_t b, int16_t c, int16_t d, int32_t method) {
        const std::vector<int16_t> source{a, b, c, d};
        int16_t target = -9999;
        Routine<BreakElvFn>("BreakElv")(source.data(), 4, 2, method, &target);
        return target;
    }

private:
    void* library_ = nullptr;
};

TEST_F(Companion, XYToSerialCountsRowsFromTheBottom) {
    const auto xyToSerial = Routine<XYToSerialFn>("XYToSerial");
    EXPECT_EQ(xyToSerial(1, 1, 1024), 1);
    EXPECT_EQ(xyToSerial(1024, 1, 1024), 1024);
    EXPECT_EQ(xyToSerial(1, 2, 1024), 1025);
    EXPECT_EQ(xyToSerial(1024, 1024, 1024), 1048576);
}

TEST_F(Companion, SegToSerialFindsThePostOfASegment) {
    const auto segToSerial = Routine<SegToSerialFn>("SegToSerial");
    EXPECT_EQ(segToSerial(1, 1, 1, 1, 1024), 1);
    EXPECT_EQ(segToSerial(1, 1, 16, 1, 1024), 16);
    EXPECT_EQ(segToSerial(2, 1, 1, 1, 1024), 17);
    EXPECT_EQ(segToSerial(1, 1, 1, 2, 1024), 1025);
    EXPECT_EQ(segToSerial(1, 2, 1, 1, 1024), 16385);
    EXPECT_EQ(segToSerial(64, 64, 16, 16, 1024), 1048576);
}

TEST_F(Companion, MeanRoundsHalfToEvenBelowZeroToo) {
    EXPECT_EQ(Break(1, 1, 1, 1, Mean), 1);
    EXPECT_EQ(Break(0, 0, 1, 1, Mean), 0);      // 0.5
    EXPECT_EQ(Break(1, 1, 2, 2, Mean), 2);      // 1.5
    EXPECT_EQ(Break(2, 2, 3, 3, Mean), 2);      // 2.5
    EXPECT_EQ(Break(0, 0, -1, -1, Mean), 0);    // -0.5
    EXPECT_EQ(Break(-1, -1, -2, -2, Mean), -2); // -1.5
    EXPECT_EQ(Break(-2, -2, -3, -3, Mean), -2); // -2.5
    EXPECT_EQ(Break(0, 0, 0, -1, Mean), 0);     // -0.25
    EXPECT_EQ(Break(0, -1, -1, -1, Mean), -1);  // -0.75
    EXPECT_EQ(Break(32767, 32767, 32767, 32767, Mean), 32767);
    EXPECT_EQ(Break(-32768, -32768, -32768, -32768, Mean), -32768);
}

TEST_F(Companion, RmsIsThePositiveRootRoundedHalfToEven) {
    EXPECT_EQ(Break(3, 3, 3, 3, Rms), 3);
    EXPECT_EQ(Break(-3, -3, -3, -3, Rms), 3);
    EXPECT_EQ(Break(1, 0, 0, 0, Rms), 0);           // sqrt(1 / 4) = 0.5
    EXPECT_EQ(Break(3, 0, 0, 0, Rms), 2);           // sqrt(9 / 4) = 1.5
    EXPECT_EQ(Break(5, 0, 0, 0, Rms), 2);           // sqrt(25 / 4) = 2.5
    EXPECT_EQ(Break(5, 1, 0, 0, Rms), 3);           // sqrt(26 / 4) = 2.55
    EXPECT_EQ(Break(100, 200, 300, 400, Rms), 274); // sqrt(75000) = 273.86
}

TEST_F(Companion, RmsOfTheExtremesDoesNotOverflow) {
    EXPECT_EQ(Break(-32768, -32768, -32768, -32768, Rms), 32767);
    EXPECT_EQ(Break(32767, 32767, 32767, 32767, Rms), 32767);
    EXPECT_EQ(Break(32767, 32767, 32767, -32768, Rms), 32767); // 32767.25
}

TEST_F(Companion, MaxTakesTheHighest) {
    EXPECT_EQ(Break(-5, -7, -9, -3, Max), -3);
    EXPECT_EQ(Break(1, 9, 3, 4, Max), 9);
    EXPECT_EQ(Break(-32768, 32767, 0, 0, Max), 32767);
}

TEST_F(Companion, SquaresAreTakenFromTheBottomLeft) {
    // Row Y = 1 first. Square of target (1, 1): 1 2 / 5 6, of (2, 1): 3 4 / 7 8, and so
    // on.
    const std::vector<int16_t> source{1, 2,  3,  4,  5,  6,  7,  8,
                                      9, 10, 11, 12, 13, 14, 15, 16};
    std::vector<int16_t> target(5, -1);
    Routine<BreakElvFn>("BreakElv")(source.data(), 16, 4, Max, target.data());
    EXPECT_EQ(target, (std::vector<int16_t>{6, 8, 14, 16, -1}));
}

TEST_F(Companion, AnUnknownMethodAndAGridOfOnePostChangeNothing) {
    EXPECT_EQ(Break(1, 2, 3, 4, 0), -9999);
    EXPECT_EQ(Break(1, 2, 3, 4, 4), -9999);
    const int16_t source = 7;
    int16_t target = -1;
    Routine<BreakElvFn>("BreakElv")(&source, 1, 1, Max, &target);
    Routine<BreakElvFn>("BreakElv")(&source, 0, 0, Max, &target);
    EXPECT_EQ(target, -1);
}

} // namespace
