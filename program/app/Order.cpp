#include "program/app/Order.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace zorvane {

std::optional<std::size_t> Order::FirstEmpty() const {
    const auto empty =
        std::find_if(Answers.begin(), Answers.end(), [](const Text& text) { return text.Empty(); });
    if (empty == Answers.end()) return std::nullopt;
    return static_cast<std::size_t>(empty - Answers.begin());
}

Text Order::Summary(const Text& version, const Text& day) const {
    std::size_t widest = 0;
    for (const OrderField& field : kFields) {
        widest = std::max(widest, std::u16string_view(field.Name).size());
    }
    std::u16string text = u"Order: Zorvane Class Code Generator\n\n";
    const auto line = [&](std::u16string_view name, std::u16string_view value) {
        text.append(name).append(u":").append(widest + 2 - name.size(), u' ').append(value);
        text += u'\n';
    };
    line(u"Date", day);
    line(u"Version", version);
    text += u'\n';
    for (std::size_t at = 0; at < kFields.size(); ++at) line(kFields[at].Name, Answers[at]);
    return text;
}

}  // namespace zorvane
