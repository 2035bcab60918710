#include <gtest/gtest.h>

#include <QDialog>
#include <QGuiApplication>
#include <QPalette>
#include <cmath>

#include "forms/Colour.h"
#include "forms/FitText.h"
#include "forms/FontRecord.h"
#include "forms/Strings.h"
#include "forms/Twips.h"
#include "tests/windows/Drive.h"

namespace zorvane::test {
namespace {

TEST(TwipsTest, RoundToTheNearestPixelAndSurviveAnything) {
    struct Case {
        float Twips;
        int Pixels;
    };
    for (const auto& [twips, pixels] : {Case{0, 0},
                                        {15, 1},
                                        {22, 1},
                                        {23, 2},
                                        {-22, -1},
                                        {-23, -2},
                                        {1e30F, 100000},
                                        {-1e30F, -100000},
                                        {NAN, 0},
                                        {INFINITY, 100000}}) {
        EXPECT_EQ(ToPixels(twips), pixels) << twips;
    }
    for (int pixels = -5000; pixels <= 5000; ++pixels) {
        ASSERT_EQ(ToPixels(ToTwips(pixels)), pixels);
    }
}

TEST(ColourTest, RedIsTheLowByteAndSystemColoursFollowThePalette) {
    QPalette palette;
    palette.setColor(QPalette::Button, QColor(1, 2, 3));
    palette.setColor(QPalette::ButtonText, QColor(4, 5, 6));
    EXPECT_EQ(ToQColor(0x00112233U, palette), QColor(0x33, 0x22, 0x11));
    EXPECT_EQ(FromQColor(QColor(0x33, 0x22, 0x11)), 0x00112233U);
    EXPECT_EQ(ToQColor(kButtonFace, palette), QColor(1, 2, 3));
    EXPECT_EQ(ToQColor(kButtonText, palette), QColor(4, 5, 6));
    for (const OleColour unknown : {0x80000019U, 0x800000FFU, 0xFFFFFFFFU}) {
        EXPECT_EQ(ToQColor(unknown, palette), QColor(Qt::black)) << std::hex << unknown;
    }
    EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 0.01);
    EXPECT_NEAR(Contrast(Qt::red, Qt::red), 1, 0.01);
}

TEST(FormTextTest, TextsGoToTheToolkitAndBackUnitByUnit) {
    for (const std::u16string& units :
         {std::u16string(), std::u16string(u"Zorvane"), std::u16string(u"a\0b", 3),
          std::u16string(1, char16_t(0xD800)), std::u16string(u"\u00e9\U0001F600")}) {
        EXPECT_EQ(ToText(ToQString(units)).Units(), units);
    }
    EXPECT_EQ(ForDisplay("\r\none\r\n\r\ntwo\n"), "\none\n\ntwo\n");
}

TEST(FormFontTest, WhatADialogDidNotChangeStaysWhateverItShowed) {
    FontRecord record;
    record.Name = u"A Missing Face";
    record.Size = 8.25;
    record.Charset = 204;
    record.Underline = true;
    const QFont shown("DejaVu Sans", 8);  // what a dialog makes of it
    EXPECT_EQ(WithChanges(record, shown, shown), record);
    QFont chosen = shown;
    chosen.setBold(true);
    chosen.setItalic(true);
    const FontRecord changed = WithChanges(record, shown, chosen);
    EXPECT_EQ(changed.Name, record.Name);
    EXPECT_EQ(changed.Size, 8.25);
    EXPECT_EQ(changed.Charset, 204);
    EXPECT_TRUE(changed.Underline && changed.Bold && changed.Italic);
    EXPECT_EQ(changed.Weight, 700);
}

TEST(FormFontTest, HostileValuesStillGiveAFont) {
    struct Case {
        const char* What;
        double Size;
        std::int16_t Weight;
        int Shown;
    };
    for (const auto& [what, size, weight, shown] : {Case{"no weight is plain", 9, 0, 400},
                                                    {"negative", -1, -5, 400},
                                                    {"no number", NAN, 32767, 1000},
                                                    {"endless", INFINITY, 700, 700}}) {
        FontRecord record;
        record.Size = size;
        record.Weight = weight;
        const QFont font = ToQFont(record);
        EXPECT_GT(font.pointSizeF(), 0) << what;
        EXPECT_LT(font.pointSizeF(), 3000) << what;
        EXPECT_EQ(static_cast<int>(font.weight()), shown) << what;
    }
}

TEST(FormFontTest, TheDialogAcceptedUnchangedChangesNothing) {
    FontChoice shown;
    shown.Font.Name = u"A Missing Face";
    shown.Font.Size = 8.25;
    shown.Font.Charset = 204;
    shown.Colour = kButtonText;
    std::optional<FontChoice> given;
    {
        WhenModal<QDialog> accept([](QDialog& dialog) { dialog.accept(); });
        given = Dialogs().FontAndColour(nullptr, shown);
    }
    ASSERT_TRUE(given);
    EXPECT_EQ(given->Font, shown.Font);
    EXPECT_EQ(given->Colour, kButtonText) << "a system colour stays one";
    WhenModal<QDialog> cancel([](QDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(Dialogs().FontAndColour(nullptr, shown), std::nullopt);
}

TEST(FormTextTest, AFittingFontFitsOrIsTheLeastOne) {
    const QString text = "Comparison of generated code with the standard collection, in words";
    const QFont font = CompactFont(14);
    for (const QSize room : {QSize(600, 100), QSize(200, 60), QSize(120, 60)}) {
        const QFont fitting = FittingFont(font, text, room);
        const QSize taken = WrappedSize(fitting, text, room.width());
        EXPECT_TRUE(taken.height() <= room.height() || fitting.pointSizeF() < 6.5);
        EXPECT_LE(fitting.pointSizeF(), 14);
    }
    EXPECT_EQ(FittingFont(font, "short", QSize(600, 100)), font) << "never larger, never needless";
}

}  // namespace
}  // namespace zorvane::test
