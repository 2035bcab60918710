#include "program/demos/frmKept.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "program/forms/Label.h"
#include "program/forms/Strings.h"
#include "program/forms/Twips.h"
#include "zorvane/platform/NumberText.h"
#include "zorvane/propbag/BagReport.h"

namespace zorvane {
namespace {

enum Column { kName, kType, kValue, kColumns };

// A number keeps its sign in front where the layout runs from the right.
constexpr QChar kRunsFromLeft(0x200E);

Text WordsText(const BagReport& bag) {
    const auto words = static_cast<std::int32_t>(bag.Words);
    return LongText(words) + Text(words == 1 ? u" word" : u" words");
}

QTreeWidgetItem* Row(QTreeWidgetItem* under, const Text& name, const Text& type) {
    auto* row = new QTreeWidgetItem(under);
    row->setText(kName, ToQString(name));
    row->setText(kType, ToQString(type));
    return row;
}

void ShowValue(QTreeWidgetItem* row, const Variant& value) {
    constexpr qsizetype kLongest = 200;  // a line shows no more
    constexpr std::int32_t kMost = 100;
    if (!value.IsArray()) {
        if (value.IsEmpty() || value.IsNull()) return;
        const bool code = value.Type() == VarType::Error;  // which has no text of its own
        const Text text = code ? LongText(value.AsError()) : value.ToText();
        row->setText(kValue, kRunsFromLeft + ToQString(text).left(kLongest));
        return;
    }
    const Array& array = value.AsArray();
    const std::int32_t shown = std::min(array.Count(), kMost);
    for (std::int32_t i = 0; i < shown; ++i) {
        const auto at = static_cast<std::int32_t>(std::int64_t{array.LowerBound()} + i);
        ShowValue(Row(row, LongText(at), Text()), array.At(at));
    }
    row->setText(kValue, kRunsFromLeft + ToQString(LongText(array.Count()) + Text(u" elements")));
}

void ShowBag(QTreeWidgetItem* under, const BagReport& bag) {
    for (const BagReport::Entry& entry : bag.Entries) {
        const Text& type = entry.Class.Empty() ? entry.Type : entry.Class;
        QTreeWidgetItem* row = Row(under, entry.Name, type);
        if (entry.Bag.empty()) {
            ShowValue(row, entry.Value);
        } else {
            row->setText(kValue, kRunsFromLeft + ToQString(WordsText(entry.Bag.front())));
            ShowBag(row, entry.Bag.front());
        }
    }
}

}  // namespace

frmKept::frmKept(const ZVPropertyBag& bag) : Form("frmKept") {
    SetCaption(u"What Is Kept");
    const Array words = bag.Contents();
    const BagReport report = ReportBag(words.Words());

    auto* label = new Label(this);
    label->setObjectName(QStringLiteral("Label1"));
    label->SetCaption(
        u"The property bag as it would be written now. A window comes in when it is closed.");
    auto* tree = new QTreeWidget(this);
    tree->setObjectName(QStringLiteral("Tree"));
    tree->setAccessibleName(QStringLiteral("Contents of the property bag"));
    tree->setColumnCount(kColumns);
    tree->setHeaderLabels(
        {QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Value")});
    tree->setAlternatingRowColors(true);
    tree->setTabKeyNavigation(false);
    ShowBag(tree->invisibleRootItem(), report);
    tree->expandToDepth(0);
    for (const Column column : {kName, kType}) {
        tree->resizeColumnToContents(column);  // the values get whatever these leave
        const int least = ToPixels(column == kName ? 1800 : 1200);
        const int most = ToPixels(column == kName ? 3300 : 1800);
        tree->header()->resizeSection(column, std::clamp(tree->columnWidth(column), least, most));
    }
    if (tree->topLevelItemCount() > 0) tree->setCurrentItem(tree->topLevelItem(0));
    auto* count = new Label(this);
    count->setObjectName(QStringLiteral("lblWords"));
    count->SetCaption(bag.Count() == 0 ? Text(u"Nothing yet") : WordsText(report));
    auto* close = new QPushButton(QStringLiteral("&Close"), this);
    close->setObjectName(QStringLiteral("CloseBtn"));
    On(close, &QPushButton::clicked, [this] { Unload(); });
    SetDefaultButton(close);
    SetCancelButton(close);

    auto* below = new QHBoxLayout;
    below->addWidget(count, 1);
    below->addWidget(close);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);
    layout->addWidget(label);
    layout->addWidget(tree, 1);
    layout->addLayout(below);
    setTabOrder(tree, close);
    resize(ToPixels(7500), ToPixels(6000));
    setMinimumSize(ToPixels(4200), ToPixels(3000));
    tree->setFocus();
}

}  // namespace zorvane
