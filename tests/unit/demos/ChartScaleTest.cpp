#include "demos/ChartScale.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zorvane {
namespace {

std::string LabelsOf(const ChartScale& scale) {
    std::string labels;
    for (const ChartScale::Mark& mark : scale.Marks()) {
        if (!mark.Label.Empty()) labels += mark.Label.ToUtf8() + "; ";
    }
    return labels;
}

TEST(ChartScale_Marks, AreLinearForASmallSpreadAndDecadesForALargeOne) {
    const struct {
        const char* what;
        std::vector<double> seconds;
        bool logarithmic;
        const char* labels;
    } rows[] = {
        {"nothing", {}, false, ""},
        {"zeros alone", {0, 0}, false, ""},
        {"one", {0.0031}, false, "0; 500 \xC2\xB5s; 1 ms; 1.5 ms; 2 ms; 2.5 ms; 3 ms; 3.5 ms; "},
        {"close to each other", {0.1, 0.4}, false, "0; 100 ms; 200 ms; 300 ms; 400 ms; "},
        {"zero does not count", {0, 0.1, 0.4}, false, "0; 100 ms; 200 ms; 300 ms; 400 ms; "},
        {"far apart", {20e-6, 3e-3}, true, "10 \xC2\xB5s; 100 \xC2\xB5s; 1 ms; 10 ms; "},
        {"whole decades",
         {1e-6, 1e-3},
         true,
         "100 ns; 1 \xC2\xB5s; 10 \xC2\xB5s; 100 \xC2\xB5s; 1 ms; "},
        {"into seconds", {0.05, 3}, true, "10 ms; 100 ms; 1 s; 10 s; "},
    };
    for (const auto& row : rows) {
        const ChartScale scale(row.seconds);
        EXPECT_EQ(scale.Logarithmic(), row.logarithmic) << row.what;
        EXPECT_EQ(LabelsOf(scale), row.labels) << row.what;
    }
}

TEST(ChartScale_HeightOf, GrowsWithTheDurationAndNeverLeavesTheAxis) {
    for (const std::vector<double>& seconds :
         {std::vector<double>{0.1, 0.4}, std::vector<double>{20e-6, 3e-3}}) {
        const ChartScale scale(seconds);
        EXPECT_GT(scale.HeightOf(seconds[0]), 0.05);  // the shortest bar can be seen
        EXPECT_GT(scale.HeightOf(seconds[1]), scale.HeightOf(seconds[0]));
        EXPECT_LE(scale.HeightOf(seconds[1]), 1);
        EXPECT_EQ(scale.HeightOf(0), 0);
        EXPECT_EQ(scale.HeightOf(-1), 0);
        EXPECT_EQ(scale.HeightOf(1e9), 1);
        EXPECT_NEAR(scale.HeightOf(scale.Marks().back().Seconds), 1, 1e-9);
        EXPECT_NEAR(scale.HeightOf(scale.Marks().front().Seconds), 0, 1e-9);
    }
}

TEST(ContenderColour, IsAnotherOneForEachContenderAndBackground) {
    for (int column = 1; column <= 4; ++column) {
        EXPECT_NE(ContenderColour(column, false), ContenderColour(column, true));
        for (int other = 1; other < column; ++other) {
            EXPECT_NE(ContenderColour(column, false), ContenderColour(other, false));
            EXPECT_NE(ContenderColour(column, true), ContenderColour(other, true));
        }
    }
}

}  // namespace
}  // namespace zorvane
