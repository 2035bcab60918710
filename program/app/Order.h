#pragma once
// Order: what a buyer is asked for, and the summary that is made of the answers.

#include <array>
#include <cstddef>
#include <optional>

#include "zorvane/platform/Text.h"

namespace zorvane {

struct OrderField {
    const char* Control;      // the entry box's name
    const char16_t* Caption;  // of its label, with the mnemonic
    const char16_t* Name;     // in the summary
    const char16_t* Hint;     // shown while the box is empty
    enum class Kind { Words, Phone, Mail, Number } Is = Kind::Words;
};

struct Order {
    static constexpr std::array<OrderField, 8> kFields{{
        {"txtName", u"&Name:", u"Name", u"First and last name"},
        {"txtAddress", u"&Address:", u"Address", u"Street and number"},
        {"txtPostalCode", u"&Postal code:", u"Postal code", u"Postal or ZIP code"},
        {"txtCity", u"Cit&y:", u"City", u"City, and state where needed"},
        {"txtCountry", u"Co&untry:", u"Country", u"Country"},
        {"txtPhone", u"&Telephone:", u"Telephone", u"With the country code",
         OrderField::Kind::Phone},
        {"txtEmail", u"&E-mail:", u"E-mail", u"name@example.com", OrderField::Kind::Mail},
        {"txtLicenses", u"&Licenses:", u"Licenses", u"How many", OrderField::Kind::Number},
    }};

    std::array<Text, kFields.size()> Answers;

    // The first field without an answer. Kept: blanks alone are an answer.
    [[nodiscard]] std::optional<std::size_t> FirstEmpty() const;
    // No box has anything in it.
    [[nodiscard]] bool Blank() const;
    // What a person may have meant otherwise, in a few words; empty where there is nothing to say.
    [[nodiscard]] Text Remark(std::size_t field) const;
    // Plain lines, ready to be sent: what is ordered, the day, and every answer after its name.
    [[nodiscard]] Text Summary(const Text& version, const Text& day) const;
};

inline constexpr char16_t kIncompleteOrder[] = u"Data must be entered in all boxes provided";

}  // namespace zorvane
