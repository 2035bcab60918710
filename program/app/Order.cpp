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

bool Order::Blank() const {
    return std::all_of(Answers.begin(), Answers.end(),
                       [](const Text& text) { return text.Empty(); });
}

Text Order::Remark(std::size_t field) const {
    const std::u16string_view answer = Answers.at(field).Units();
    const auto holds = [answer](std::u16string_view any) {
        return answer.find_first_of(any) != std::u16string_view::npos;
    };
    switch (kFields.at(field).Is) {
        case OrderField::Kind::Mail:
            return answer.empty() || holds(u"@") ? Text() : Text(u"Without an \"@\"?");
        case OrderField::Kind::Number: {
            const bool none = holds(u"0") && !holds(u"123456789");
            return none || answer.starts_with(u'-') ? Text(u"None at all?") : Text();
        }
        case OrderField::Kind::Phone:
        case OrderField::Kind::Words:
            break;
    }
    return Text();
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
