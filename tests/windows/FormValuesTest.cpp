#include <cmath>

#include "program/forms/Colour.h"
#include "program/forms/Dialogs.h"
#include "program/forms/FitText.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Twips.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

TEST(TwipsTest, RoundToTheNearestPixelAndSurviveAnything) {
    const std::pair<float, int> rows[] = {
        {0, 0},    {15, 1},         {22, 1},  {23, 2},           {-22, -1},
        {-23, -2}, {1e30F, 100000}, {NAN, 0}, {-1e30F, -100000}, {INFINITY, 100000}};
    for (const auto& [twips, pixels] : rows) {
        EXPECT_EQ(ToPixels(twips), pixels) << twips;
    }
}

TEST(ColourTest, RedIsTheLowByteAndSystemColoursFollowThePalette) {
    QPalette palette;
    palette.setColor(QPalette::Button, QColor(1, 2, 3));
    palette.setColor(QPalette::ButtonText, QColor(4, 5, 6));
    EXPECT_EQ(ToQColor(0x00112233U, palette), QColor(0x33, 0x22, 0x11));
    EXPECT_EQ(ToQColor(kButtonFace, palette), QColor(1, 2, 3));
    EXPECT_EQ(ToQColor(kButtonText, palette), QColor(4, 5, 6));
    for (const OleColour unknown : {0x80000019U, 0x800000FFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ToQColor(unknown, palette), QColor(Qt::black)) << std::hex << unknown;
    }
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
}

FontRecord OddRecord() {
    return {.Name = u"A Missing Face", .Size = 8.25, .Charset = 204, .Underline = true};
}

TEST(FormFontTest, WhatADialogDidNotChangeStaysWhateverItShowed) {
    const QFont shown("DejaVu Sans", 8);  // what a dialog makes of it
    EXPECT_EQ(WithChanges(OddRecord(), shown, shown), OddRecord());
    QFont chosen = shown;
    chosen.setBold(true);
    chosen.setItalic(true);
    FontRecord wanted = OddRecord();
    wanted.Bold = wanted.Italic = true;
    wanted.Weight = 700;
    EXPECT_EQ(WithChanges(OddRecord(), shown, chosen), wanted);
}

TEST(FormFontTest, WeightsAndSizesBeyondReasonStillGiveAFontAndBoldIsBoldOrMore) {
    const std::pair<FontRecord, int> rows[] = {{{.Weight = 0}, 400},
                                               {{.Weight = -5}, 400},
                                               {{.Weight = 32767}, 1000},
                                               {{.Weight = 400, .Bold = true}, 700},
                                               {{.Weight = 900, .Bold = true}, 900}};
    for (const auto& [record, weight] : rows) {
        EXPECT_EQ(static_cast<int>(ToQFont(record).weight()), weight) << record.Weight;
    }
    for (const double size : {-1.0, double{NAN}, double{INFINITY}, 1e9}) {
        const double shown = ToQFont({.Size = size}).pointSizeF();
        EXPECT_TRUE(shown > 0 && shown < 3000) << size;
    }
}

TEST(FormFontTest, ATextThatFitsNowhereIsStillReadable) {
    const QFont font = FittingFont(CompactFont(9), "a long text", QSize(4, 4), 6);
    EXPECT_LT(font.pointSizeF(), 9);
    EXPECT_GE(font.pointSizeF(), 6);
}

TEST(FormFontTest, EnterTakesTheDialogUnchangedAndEscapeEndsItWhole) {
    FontChoice shown;
    shown.Font = OddRecord();
    shown.Colour = kButtonText;
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return}) {
        WhenModal<QDialog> dialog([key](QDialog& open) {
            QTest::keyClick(open.findChild<QLineEdit*>(), key);
            EXPECT_FALSE(open.isVisible()) << "nothing happened, or an empty frame was left";
        });
        const auto given = Dialogs().FontAndColour(nullptr, shown);
        ASSERT_EQ(given.has_value(), key == Qt::Key_Return);
        if (!given) continue;
        EXPECT_EQ(given->Font, shown.Font);
        EXPECT_EQ(given->Colour, kButtonText) << "a system colour stays one";
    }
}

}  // namespace
}  // namespace zorvane::test
