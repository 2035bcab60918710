#include "program/app/frmSplash.h"

#include <QFrame>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <algorithm>
#include <array>

#include "program/app/Contact.h"
#include "program/app/Logo.h"
#include "program/app/Version.h"
#include "program/forms/FitText.h"
#include "program/forms/FontRecord.h"
#include "program/forms/Label.h"
#include "program/forms/Mirror.h"
#include "program/forms/Screen.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/CaseMapping.h"
#include "zorvane/platform/Error.h"

namespace zorvane {
namespace {

// In pixels: the window, and the frame that holds everything.
constexpr QSize kInner(600, 356);
constexpr QRect kFrame(10, 10, 580, 336);

// 1, or the part of its size at which the window has room on a screen.
double SizeOn(const QScreen& screen) {
    constexpr QSize kBorders(12, 32);
    const QSizeF room = screen.availableSize() - kBorders;
    return std::min({1.0, room.width() / kInner.width(), room.height() / kInner.height()});
}

}  // namespace

frmSplash::frmSplash()
    : Form("frmSplash"),
      size_(SizeOn(*screen())),
      fraMainFrame_(new QFrame(this)),
      picLogo_(new LogoBox(fraMainFrame_)),
      closeBtn_(new QPushButton(QStringLiteral("&Close"), fraMainFrame_)),
      picture1_(new QFrame(fraMainFrame_)),
      progressBar1_(new QProgressBar(picture1_)),
      label3_(new Label(picture1_)) {
    SetCaption(u"Splash Form");
    setFixedSize(kInner * size_);
    fraMainFrame_->setObjectName(QStringLiteral("fraMainFrame"));
    fraMainFrame_->setFrameStyle(static_cast<int>(QFrame::StyledPanel) |
                                 static_cast<int>(QFrame::Sunken));
    Move(fraMainFrame_, kFrame);
    picLogo_->setObjectName(QStringLiteral("picLogo"));
    Move(picLogo_, {24, 24, 128, 128});

    lblCompanyProduct_ = AddLabel("lblCompanyProduct", 11);
    lblProductName_ = AddLabel("lblProductName", 18, true);
    lblVersion_ = AddLabel("lblVersion", 11);
    lblPlatform_ = AddLabel("lblPlatform", 11);
    lblSourceCode_ = AddLabel("Label1", 11, true);
    lblContact_ = AddLabel("Label2", 9);
    lblWarning_ = AddLabel("lblWarning", 8.25);
    lblCompanyProduct_->SetCaption(u"Code-Generator Add-In");
    lblPlatform_->SetCaption(u"For Linux desktops");
    lblSourceCode_->SetCaption(u"Source Code Included");
    lblWarning_->SetCaption(
        u"Warning: this demonstration is provided as it is, without warranty of any kind. Whoever "
        u"uses it does so at their own risk.");
    constexpr int kLeft = 176;
    constexpr int kWide = 384;
    Move(lblCompanyProduct_, {kLeft, 24, kWide, 20});
    Move(lblProductName_, {kLeft, 46, kWide, 34});
    Move(lblVersion_, {kLeft, 84, kWide, 20});
    Move(lblPlatform_, {kLeft, 106, kWide, 20});
    Move(lblSourceCode_, {kLeft, 132, kWide, 20});
    Move(lblContact_, {24, 162, 536, 50});
    Move(lblWarning_, {24, 226, 536, 34});

    closeBtn_->setObjectName(QStringLiteral("CloseBtn"));
    closeBtn_->setToolTip(QStringLiteral("Go on to the demonstrations"));
    closeBtn_->resize(110, 30);
    closeBtn_->hide();
    On(closeBtn_, &QPushButton::clicked, [this] { CloseBtn_Click(); });
    SetDefaultButton(closeBtn_);
    SetCancelButton(closeBtn_);

    picture1_->setObjectName(QStringLiteral("Picture1"));
    picture1_->setAccessibleName(QStringLiteral("Progress"));
    Move(picture1_, {24, 266, 532, 60});
    progressBar1_->setObjectName(QStringLiteral("ProgressBar1"));
    progressBar1_->setAccessibleName(QStringLiteral("Progress"));
    progressBar1_->setRange(0, 100);
    progressBar1_->setValue(0);
    label3_->setObjectName(QStringLiteral("Label3"));
    label3_->setAccessibleName(QStringLiteral("What is being done"));
}

void frmSplash::Move(QWidget* control, const QRect& at) const {
    const QRectF placed(QPointF(at.topLeft()) * size_, QSizeF(at.size()) * size_);
    PlaceControl(control, placed.toRect());
}

Label* frmSplash::AddLabel(const char* name, double points, bool bold) {
    auto* label = new Label(fraMainFrame_);
    label->setObjectName(QLatin1String(name));
    QFont font = CompactFont(points * size_);
    font.setBold(bold);
    label->setFont(font);
    return label;
}

void frmSplash::Form_Load() {
    lblVersion_->SetCaption(Text(u"Version ") + ProgramVersion());
    lblProductName_->SetCaption(u"Zorvane Class Code Generator");
    lblProductName_->setFont(
        FittingFont(lblProductName_->font(), lblProductName_->text(), lblProductName_->size()));
    lblContact_->SetCaption(ContactLines());
    LayOutProgress();
    PlaceCloseButton();
    Screen::The().SetMousePointer(Pointer::Hourglass);
    label3_->show();
}

// Caption above the bar, both one unit away from the sides.
void frmSplash::LayOutProgress() {
    const int unit = Variant(static_cast<double>(picture1_->width()) / 16).ToLong();
    const int wide = picture1_->width() - 2 * unit;
    const int half = picture1_->height() / 2;
    label3_->setGeometry(unit, 0, wide, half);
    progressBar1_->setGeometry(unit, half, wide, half - 6);
    label3_->SetCaption(Text());
    picture1_->hide();
}

void frmSplash::PlaceCloseButton() {
    const float frameWidth = ToTwips(fraMainFrame_->width());
    const float frameHeight = ToTwips(fraMainFrame_->height());
    const float left = (frameWidth - ToTwips(closeBtn_->width())) / 2;
    const float top = frameHeight - ToTwips(closeBtn_->height()) - 50;
    closeBtn_->move(ToPixels(left), ToPixels(top));
}

void frmSplash::Form_Unload() {
    // Kept: the arrow, not the default.
    Screen::The().SetMousePointer(Pointer::Arrow);
}

void frmSplash::CloseBtn_Click() {
    Hide();
    Unload();
}

void frmSplash::SetCloseVisible(bool value) {
    Load();
    if (closeBtn_->parentWidget() != fraMainFrame_) closeBtn_->setParent(fraMainFrame_);
    closeBtn_->setEnabled(true);
    closeBtn_->setVisible(value);
    if (value) closeBtn_->setFocus();
    Screen::The().SetMousePointer(Pointer::Arrow);
}

void frmSplash::SetProgressBarMax(std::int32_t& value) {
    Load();
    if (value < 2) value = 2;
    const int shown = progressBar1_->value();
    progressBar1_->setRange(1, value);
    progressBar1_->setValue(std::clamp(shown, 1, static_cast<int>(value)));
}

void frmSplash::SetProgressBarStatus(std::int32_t value) {
    Load();
    const auto position = static_cast<float>(value);
    if (position < static_cast<float>(progressBar1_->minimum()) ||
        position > static_cast<float>(progressBar1_->maximum())) {
        throw Error(PlatformError::InvalidValue, u"ProgressBar1");
    }
    progressBar1_->setValue(std::min(Variant(position).ToLong(), progressBar1_->maximum()));
}

void frmSplash::SetProgressBarText(const Text& value) {
    Load();
    label3_->SetCaption(value);
}

void frmSplash::SetProgressBarVisible(bool value) {
    Load();
    closeBtn_->hide();
    picture1_->setVisible(value);
    Screen::The().SetMousePointer(Pointer::Hourglass);
}

void frmSplash::Set(std::u16string_view member, const Variant& value, Arguments arguments) {
    struct Property {
        std::u16string_view Name;
        void (*Assign)(frmSplash&, const Variant&);
    };
    static constexpr std::array<Property, 5> kProperties{{
        {u"CloseVisible",
         [](frmSplash& form, const Variant& v) { form.SetCloseVisible(v.ToBoolean()); }},
        {u"ProgressBarMax",
         [](frmSplash& form, const Variant& v) {
             std::int32_t highest = v.ToLong();
             form.SetProgressBarMax(highest);
         }},
        {u"ProgressBarStatus",
         [](frmSplash& form, const Variant& v) { form.SetProgressBarStatus(v.ToLong()); }},
        {u"ProgressBarText",
         [](frmSplash& form, const Variant& v) { form.SetProgressBarText(v.ToText()); }},
        {u"ProgressBarVisible",
         [](frmSplash& form, const Variant& v) { form.SetProgressBarVisible(v.ToBoolean()); }},
    }};
    for (const Property& property : kProperties) {
        if (EqualTexts(property.Name, member, CompareMode::Text)) {
            return property.Assign(*this, value);
        }
    }
    Form::Set(member, value, arguments);
}

}  // namespace zorvane
