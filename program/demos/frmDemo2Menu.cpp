// The menus of a property-bag window, and what they do.
#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "program/demos/PropBagSession.h"
#include "program/demos/frmDemo2.h"
#include "program/demos/frmKept.h"
#include "program/forms/Dialogs.h"
#include "program/forms/Strings.h"

namespace zorvane {

QAction* frmDemo2::AddItem(QMenu* menu, const char* name, const QString& text, const QString& tip,
                           void (frmDemo2::*handler)()) {
    QAction* item = menu->addAction(text);
    item->setObjectName(QLatin1String(name));
    item->setToolTip(tip);
    On(item, &QAction::triggered, [this, handler] { (this->*handler)(); });
    return item;
}

void frmDemo2::AddMenus() {
    const auto add = [this](const char* name, const QString& title) {
        QMenu* menu = menu_->addMenu(title);
        menu->setObjectName(QLatin1String(name));
        menu->setToolTipsVisible(true);
        return menu;
    };
    QMenu* file = add("mnuFile", QStringLiteral("&File"));
    AddItem(file, "mnuFileKept", QStringLiteral("&What Is Kept..."),
            QStringLiteral("See what the property bag holds"), &frmDemo2::mnuFileKept_Click);
    file->addSeparator();
    AddItem(file, "mnuFileExit", QStringLiteral("E&xit"), QStringLiteral("Store this window"),
            &frmDemo2::mnuFileExit_Click)
        ->setShortcut(Qt::Key_Escape);
    QMenu* custom = add("mnuCustom", QStringLiteral("&Customize"));
    AddItem(custom, "mnuCustomBackColor", QStringLiteral("&Background Color..."),
            QStringLiteral("Pick the color of this window"), &frmDemo2::mnuCustomBackColor_Click);
    AddItem(custom, "mnuCustomCaption", QStringLiteral("&Caption..."),
            QStringLiteral("Give this window another title"), &frmDemo2::mnuCustomCaption_Click);
    AddItem(custom, "mnuCustomizeFont", QStringLiteral("&Font..."),
            QStringLiteral("Pick the font and the color of the text"),
            &frmDemo2::mnuCustomizeFont_Click);
    custom->addSeparator();
    undoItem_ = AddItem(custom, "mnuCustomUndo", QStringLiteral("&Undo"),
                        QStringLiteral("Take back what was last done in this menu"),
                        &frmDemo2::mnuCustomUndo_Click);
    undoItem_->setShortcut(QKeySequence::Undo);
    undoItem_->setEnabled(false);
    redoItem_ =
        AddItem(custom, "mnuCustomRedo", QStringLiteral("Re&do"),
                QStringLiteral("Do again what was taken back"), &frmDemo2::mnuCustomRedo_Click);
    redoItem_->setShortcuts(
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    redoItem_->setEnabled(false);
    AddItem(custom, "mnuCustomReset", QStringLiteral("&Reset to Defaults"),
            QStringLiteral("Size, colors, caption and font of a new window"),
            &frmDemo2::mnuCustomReset_Click);
}

void frmDemo2::mnuFileExit_Click() {
    Unload();
}

void frmDemo2::mnuFileKept_Click() {
    MakeObject<frmKept>(session_.Bag())->ShowModal(this);
}

void frmDemo2::mnuCustomBackColor_Click() {
    const auto chosen = Dialogs::Current().Colour(this, look_.BackColor);
    if (!chosen) return;
    RememberLook();
    SetBackColor(*chosen);
}

void frmDemo2::mnuCustomCaption_Click() {
    constexpr qsizetype kLongest = 1000;  // an entry box does not show more
    const QString shown = ToQString(Caption()).left(kLongest);
    const auto answer = Dialogs::Current().InputBox(this, QStringLiteral("Customize Caption"),
                                                    QStringLiteral("Insert a new caption"), shown);
    if (!answer || answer->isEmpty() || *answer == shown) return;
    RememberLook();
    SetCaption(ToText(*answer));
}

void frmDemo2::mnuCustomizeFont_Click() {
    // The colors that are seen; one that is left as it is has not been chosen.
    const ShownColours shown = Readable(look_, QApplication::palette());
    const OleColour seen = FromQColor(shown.Fore);
    const auto chosen =
        Dialogs::Current().FontAndColour(this, {look_.Font, seen, FromQColor(shown.Back)});
    if (!chosen) return;
    RememberLook();
    look_.Font = chosen->Font;
    if (chosen->Colour != seen) look_.ForeColor = chosen->Colour;
    CopyFontAndColours();
}

void frmDemo2::mnuCustomRedo_Click() {
    Step(redo_, undo_);
}

void frmDemo2::mnuCustomUndo_Click() {
    Step(undo_, redo_);
}

void frmDemo2::Step(std::vector<Before>& from, std::vector<Before>& to) {
    if (from.empty()) return;
    const Before before = std::move(from.back());
    from.pop_back();
    look_.Caption = Caption();
    to.push_back({look_, before.Size});
    if (before.Size) to.back().Size = TwipRect{.Width = Width(), .Height = Height()};
    ShowSteps();
    SetLook(before.Worn);
    if (!before.Size) return;
    SetWidth(before.Size->Width);
    SetHeight(before.Size->Height);
}

void frmDemo2::mnuCustomReset_Click() {
    RememberLook();
    undo_.back().Size = TwipRect{.Width = Width(), .Height = Height()};
    SetLook({});
    showNormal();
    const QSize outer = UsualSize().grownBy(FramePlacement::UsualBorders());
    SetWidth(ToTwips(outer.width()));
    SetHeight(ToTwips(outer.height()));
    // It may have grown past an edge.
    const QRect room = screen()->availableGeometry();
    const int left = std::min(ToPixels(Left()), room.x() + room.width() - outer.width());
    const int top = std::min(ToPixels(Top()), room.y() + room.height() - outer.height());
    if (left < ToPixels(Left())) SetLeft(ToTwips(std::max(left, room.x())));
    if (top < ToPixels(Top())) SetTop(ToTwips(std::max(top, room.y())));
}

void frmDemo2::RememberLook() {
    look_.Caption = Caption();
    undo_.push_back({look_, std::nullopt});
    redo_.clear();
    ShowSteps();
}

void frmDemo2::ShowSteps() {
    undoItem_->setEnabled(!undo_.empty());
    redoItem_->setEnabled(!redo_.empty());
}

}  // namespace zorvane
