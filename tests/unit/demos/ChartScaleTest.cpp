#include "program/demos/ChartScale.h"

#include "tests/support/Testing.h"

namespace zorvane {
namespace {

std::string LabelsOf(const ChartScale& scale) {
    std::string labels;
    for (const ChartScale::Mark& mark : scale.Marks()) {
        if (!mark.Label.Empty()) labels += mark.Label.ToUtf8() + "; ";
    }
    return labels;
}

TEST(ChartScale, IsLinearForASmallSpreadAndInDecadesForALargeOneAndABarStaysWithinIt) {
    const std::tuple<const char*, std::vector<double>, double, const char*> rows[] = {
        {"one", {0.0031}, 0.0031, "0; 500 \xC2\xB5s; 1 ms; 1.5 ms; 2 ms; 2.5 ms; 3 ms; 3.5 ms; "},
        {"zero does not count", {0, 0.1, 0.4}, 0.1, "0; 100 ms; 200 ms; 300 ms; 400 ms; "},
        {"far apart", {20e-6, 3e-3}, 20e-6, "10 \xC2\xB5s; 100 \xC2\xB5s; 1 ms; 10 ms; "},
        {"whole decades",
         {1e-6, 1e-3},
         1e-6,
         "100 ns; 1 \xC2\xB5s; 10 \xC2\xB5s; 100 \xC2\xB5s; 1 ms; "},
    };
    for (const auto& [what, seconds, shortest, labels] : rows) {
        SCOPED_TRACE(what);
        const ChartScale scale(seconds);
        EXPECT_EQ(LabelsOf(scale), labels);
        EXPECT_EQ(scale.Logarithmic(), labels[0] != '0');
        EXPECT_GT(scale.HeightOf(shortest), 0.05) << "no bar to be seen";
        EXPECT_EQ(scale.HeightOf(-1), 0);
        EXPECT_EQ(scale.HeightOf(1e9), 1);
        EXPECT_NEAR(scale.HeightOf(scale.Marks().back().Seconds), 1, 1e-9);
        EXPECT_NEAR(scale.HeightOf(scale.Marks().front().Seconds), 0, 1e-9);
    }
    EXPECT_EQ(LabelsOf(ChartScale(std::vector<double>{0, 0})), "");
}

}  // namespace
}  // namespace zorvane
