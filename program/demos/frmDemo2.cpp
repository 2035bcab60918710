#include "program/demos/frmDemo2.h"

#include <QApplication>
#include <QEvent>
#include <QMenuBar>
#include <QPaintEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <algorithm>
#include <optional>

#include "program/demos/KeepingNotice.h"
#include "program/demos/PropBagSession.h"
#include "program/forms/IndentLabel.h"
#include "program/forms/Mirror.h"
#include "program/forms/Screen.h"
#include "program/forms/Strings.h"
#include "zorvane/platform/Error.h"
#include "zorvane/platform/NumberText.h"
#include "zorvane/propbag/ZVPropertyBag.h"

namespace zorvane {
namespace {

// Kept: two blanks between "ZVPropertyBag" and "Object", and one before the last full stop.
constexpr char16_t kExplanation[] =
    u"Demonstrates use of Zorvane generated IZVPropertyBag Interface and ZVPropertyBag Objects to "
    u"Persist Data to a Disk.\r\n"
    u"  ZVPropertyBag can persist all of the platform's Data Types, Arrays, specific Objects, and "
    u"Objects that support the IZVPropertyBag Interface.\r\n"
    u"  You may customize the Size, Position, Caption and Background Color of the form.\r\n"
    u"  When you close the Form, the current settings will be automatically stored in a "
    u"ZVPropertyBag Class Object.\r\n"
    u"  When the application ends, the data in the ZVPropertyBag  Object will be persisted in a "
    u"binary formatted file, and your settings will be re-instated in the next session for each "
    u"Form .";

constexpr QPoint kAside(28, 28);

// As the window itself tells it: before a window is mapped the toolkit knows nothing of borders.
QRect FrameOf(const Form& window) {
    return {ToPixels(window.Left()), ToPixels(window.Top()), ToPixels(window.Width()),
            ToPixels(window.Height())};
}

// Where a new window covers none of those open: to the right of `from` while the room lasts, then
// to its left, below or above.
std::optional<QPoint> Beside(const QRect& from, QSize size, const QRect& room,
                             const std::vector<QRect>& open) {
    constexpr int kGap = 8;
    const int across = size.width() + kGap;
    const int down = size.height() + kGap;
    const QPoint wishes[] = {{from.x() + from.width() + kGap, from.y()},
                             {from.x() - across, from.y()},
                             {from.x() - 2 * across, from.y()},
                             {from.x(), from.y() + from.height() + kGap},
                             {from.x(), from.y() - down}};
    for (const QPoint& wish : wishes) {
        const QRect frame(wish, size);
        const auto covers = [&frame](const QRect& other) { return frame.intersects(other); };
        if (room.contains(frame) && std::none_of(open.begin(), open.end(), covers)) return wish;
    }
    return std::nullopt;
}

// A step aside, and on while that is just the corner of a window that is open. Beyond the room it
// goes on at the top, each time further to the right.
QPoint Aside(QPoint at, QSize size, const QRect& room, const std::vector<QRect>& open) {
    QPoint top = room.topLeft();
    const auto taken = [&at](const QRect& frame) { return frame.topLeft() == at; };
    do {
        at += kAside;
        if (room.contains(QRect(at, size))) continue;
        at = top;
        top.rx() += kAside.x();
    } while (std::any_of(open.begin(), open.end(), taken) && top.x() < room.right());
    return at;
}

}  // namespace

frmDemo2::frmDemo2(PropBagSession& session)
    : Form("frmDemo2"),
      session_(session),
      menu_(new QMenuBar(this)),
      label1_(new Label(this)),
      label2_(new IndentLabel),
      label3_(new Label(this)),
      explanation_(new QScrollArea(this)),
      cmdShowNext_(new QPushButton(QStringLiteral("Show &Next Form"), this)) {
    resize(UsualSize());
    setMinimumSize(ToPixels(4200), ToPixels(3000));

    label1_->setObjectName(QStringLiteral("Label1"));
    label2_->setObjectName(QStringLiteral("Label2"));
    label2_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label3_->setObjectName(QStringLiteral("Label3"));
    label3_->hide();
    explanation_->setObjectName(QStringLiteral("Explanation"));
    explanation_->setAccessibleName(QStringLiteral("Explanation"));
    explanation_->setFrameShape(QFrame::NoFrame);
    explanation_->setWidgetResizable(true);
    explanation_->setWidget(label2_);
    // The keyboard has something to do there only while there is something to scroll to.
    explanation_->setFocusPolicy(Qt::NoFocus);
    connect(explanation_->verticalScrollBar(), &QScrollBar::rangeChanged, explanation_,
            [this](int, int most) {
                explanation_->setFocusPolicy(most > 0 ? Qt::StrongFocus : Qt::NoFocus);
            });
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* before, QWidget* now) {
        if (before == explanation_ || now == explanation_) update();
    });
    // The window's own background shows through.
    label2_->setAutoFillBackground(false);
    explanation_->viewport()->setAutoFillBackground(false);
    cmdShowNext_->setObjectName(QStringLiteral("cmdShowNext"));
    On(cmdShowNext_, &QPushButton::clicked, [this] { cmdShowNext_Click(); });
    cmdShowNext_->setToolTip(QStringLiteral("Open the window of the next number"));
    AddMenus();
    cmdShowNext_->setFocus();
    SetLook({});
}

QSize frmDemo2::UsualSize() {
    return {ToPixels(6000), ToPixels(4500)};
}

void frmDemo2::Form_Load() {
    number_ = ++session_.Counter;
    label1_->SetCaption(Text(u"Form No : ") + LongText(number_));
    label2_->SetCaption(kExplanation);
    const KeepingNotice notice = NoticeOf(session_);
    label3_->SetCaption(notice.Line);
    label3_->setToolTip(ToQString(notice.Reason));
    label3_->setVisible(!notice.Line.Empty());
    Form_Resize();
    Screen::The().SetMousePointer(Pointer::Default);
}

void frmDemo2::Form_Resize() {
    constexpr int kMargin = 12;
    constexpr int kGap = 8;
    const QSize button = cmdShowNext_->sizeHint().expandedTo(QSize(130, 30));
    const int menuHeight = menu_->heightForWidth(width());
    menu_->setGeometry(0, 0, width(), menuHeight);
    const int wide = width() - 2 * kMargin;
    int top = menuHeight + kMargin;
    const int bottom = height() - kMargin - button.height();
    PlaceControl(cmdShowNext_,
                 {width() - kMargin - button.width(), bottom, button.width(), button.height()});
    PlaceControl(label3_, {kMargin, bottom, wide - button.width() - kGap, button.height()});
    // A very large font leaves the explanation half of the room.
    const int numberHeight = std::min(label1_->heightForWidth(wide), (bottom - top) / 2);
    PlaceControl(label1_, {kMargin, top, wide, numberHeight});
    top += numberHeight + kGap;
    PlaceControl(explanation_, {kMargin, top, wide, std::max(0, bottom - kGap - top)});
}

void frmDemo2::Form_Unload() {
    --session_.Counter;
    session_.Bag().WriteProperty(PropBagSession::EntryName(number_), Ref<frmDemo2>(this));
}

void frmDemo2::cmdShowNext_Click() {
    const Ref<frmDemo2> fresh = MakeObject<frmDemo2>(session_);
    const Variant restored =
        session_.Bag().ReadProperty(PropBagSession::EntryName(number_ + 1), {.Default = fresh});
    const Ref<frmDemo2> next = ViewAs<frmDemo2>(restored.AsObject());
    // All belong to the first: closing one in the middle closes none of the later ones.
    next->first_ = first_ ? first_ : QPointer<Form>(this);
    next->PlaceBeside(*this);
    next->ShowOwned(next->first_);
}

void frmDemo2::PlaceBeside(const frmDemo2& other) {
    std::vector<QRect> open;
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        const auto* form = qobject_cast<const frmDemo2*>(window);
        if (form && form != this && form->isVisible()) open.push_back(FrameOf(*form));
    }
    const QRect room = other.screen()->availableGeometry();
    const QSize outer = size().grownBy(FramePlacement::UsualBorders());
    QPoint at = FrameOf(*this).topLeft();
    if (placed_) {
        // Never exactly over a window that is open: the two would look like one.
        const auto covers = [&at](const QRect& frame) { return frame.topLeft() == at; };
        if (std::none_of(open.begin(), open.end(), covers)) return;
        at = Aside(at, outer, room, open);
    } else {
        const QRect from = FrameOf(other);
        const auto free = Beside(from, outer, room, open);
        at = free ? *free : Aside(from.topLeft(), outer, room, open);
    }
    SetLeft(ToTwips(at.x()));
    SetTop(ToTwips(at.y()));
}

void frmDemo2::SetLook(const Look& look) {
    look_ = look;
    SetCaption(look.Caption);
    CopyFontAndColours();
}

void frmDemo2::SetBackColor(OleColour value) {
    look_.BackColor = value;
    CopyFontAndColours();
}

void frmDemo2::SetForeColor(OleColour value) {
    look_.ForeColor = value;
    CopyFontAndColours();
}

void frmDemo2::SetWindowFont(const FontRecord& value) {
    look_.Font = value;
    CopyFontAndColours();
}

void frmDemo2::CopyFontAndColours() {
    const ShownColours shown = Readable(look_, QApplication::palette());
    for (Label* label : {label1_, label2_, label3_}) {
        QPalette colours = label->palette();
        colours.setColor(QPalette::WindowText, shown.Fore);
        label->setPalette(colours);
    }
    const QFont font = ToQFont(look_.Font);
    label1_->setFont(font);
    label2_->setFont(font);
    update();
    if (Loaded()) Form_Resize();
}

void frmDemo2::changeEvent(QEvent* event) {
    Form::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) CopyFontAndColours();
}

void frmDemo2::paintEvent(QPaintEvent* event) {
    const QColor back = Readable(look_, QApplication::palette()).Back;
    QPainter painter(this);
    painter.fillRect(event->rect(), back);
    if (!explanation_->hasFocus()) return;
    constexpr int kAround = 3;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.rect = explanation_->geometry().adjusted(-kAround, -kAround, kAround, kAround);
    option.backgroundColor = back;
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

Text frmDemo2::ClassName() const {
    return Text();
}

Variant frmDemo2::ParentObject() {
    return Ref<frmDemo2>(this);
}

void frmDemo2::ReadProperties(ZVPropertyBag& bag) {
    const auto read = [&bag](const char16_t* name, auto&& assign) {
        bool assigned = false;
        IgnoringErrors([&] {
            const Variant value = bag.ReadProperty(name);
            if (value.IsEmpty()) return;
            assign(value);
            assigned = true;
        });
        return assigned;
    };
    const bool left = read(u"Left", [this](const Variant& v) { SetLeft(v.ToSingle()); });
    const bool top = read(u"Top", [this](const Variant& v) { SetTop(v.ToSingle()); });
    placed_ = left && top;
    read(u"Width", [this](const Variant& v) { SetWidth(v.ToSingle()); });
    read(u"Height", [this](const Variant& v) { SetHeight(v.ToSingle()); });
    read(u"BackColor",
         [this](const Variant& v) { SetBackColor(static_cast<OleColour>(v.ToLong())); });
    read(u"ForeColor",
         [this](const Variant& v) { SetForeColor(static_cast<OleColour>(v.ToLong())); });
    read(u"Caption", [this](const Variant& v) { SetCaption(v.ToText()); });
    IgnoringErrors([&] {
        const Variant font = bag.ReadProperty(u"Font", {.Default = MakeObject<Font>(look_.Font)});
        if (const Ref<Font> made = ViewAs<Font>(font.AsObject())) SetWindowFont(made->Value);
    });
}

void frmDemo2::WriteProperties(ZVPropertyBag& bag) {
    bag.WriteProperty(u"Left", Left());
    bag.WriteProperty(u"Top", Top());
    bag.WriteProperty(u"Width", Width());
    bag.WriteProperty(u"Height", Height());
    bag.WriteProperty(u"BackColor", static_cast<std::int32_t>(look_.BackColor));
    bag.WriteProperty(u"ForeColor", static_cast<std::int32_t>(look_.ForeColor));
    bag.WriteProperty(u"Caption", Caption());
    bag.WriteProperty(u"Font", MakeObject<Font>(look_.Font));
}

}  // namespace zorvane
