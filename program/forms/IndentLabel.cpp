#include "program/forms/IndentLabel.h"

#include <QPainter>
#include <QStyle>
#include <algorithm>

#include "program/forms/FitText.h"

namespace zorvane {

template <class Take>
int IndentLabel::LayOut(int width, Take take) const {
    int top = 0;
    for (const QString& paragraph : text().split(QLatin1Char('\n'))) {
        const auto letter = std::find_if(paragraph.begin(), paragraph.end(),
                                         [](QChar one) { return one != QLatin1Char(' '); });
        const auto blanks = static_cast<qsizetype>(letter - paragraph.begin());
        const int indent = fontMetrics().horizontalAdvance(paragraph.left(blanks));
        const QString words = paragraph.mid(blanks);
        const int room = std::max(1, width - indent);
        const int tall =
            std::max(WrappedSize(font(), words, room).height(), fontMetrics().height());
        take(words, QRect(indent, top, room, tall));
        top += tall;
    }
    return top;
}

int IndentLabel::heightForWidth(int width) const {
    return LayOut(width, [](const QString&, const QRect&) {});
}

QSize IndentLabel::minimumSizeHint() const {
    return {0, heightForWidth(width())};
}

QSize IndentLabel::sizeHint() const {
    return {width(), heightForWidth(width())};
}

void IndentLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    LayOut(width(), [&](const QString& words, const QRect& place) {
        const QRect seen = QStyle::visualRect(layoutDirection(), rect(), place);
        const auto align = QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignTop);
        style()->drawItemText(&painter, seen, static_cast<int>(align) | Qt::TextWordWrap, palette(),
                              isEnabled(), words, foregroundRole());
    });
}

}  // namespace zorvane
