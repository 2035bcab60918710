// Contacts under their names, and in two more orders that follow every change.
#include <iostream>
#include <stdexcept>
#include <string>

#include "zorvane/table/Table.h"

namespace {

struct Contact {
    std::string Name;
    std::string City;
    int Born;
    double Owed;
};

void Print(const char* what, const auto& contacts) {
    std::cout << what << ':';
    for (const Contact& contact : contacts) std::cout << ' ' << contact.Name;
    std::cout << '\n';
}

}  // namespace

int main() {
    zorvane::Table<Contact, &Contact::Name> people = {{"Ada", "London", 1815, 12.5},
                                                      {"Grace", "New York", 1906, 0},
                                                      {"Alan", "London", 1912, 3},
                                                      {"Edsger", "Rotterdam", 1930, 0}};
    const auto byCity = people.order(&Contact::City, zorvane::descending(&Contact::Born));
    const auto byAge = people.order(&Contact::Born);
    Print("as they came", people);
    Print("by city, the youngest first", byCity);
    Print("of London", byCity.equal_range("London"));

    people.update("Ada", [](Contact& contact) { contact.City = "Ockham"; });
    people.set("Alan", &Contact::Born, 1812);
    people.insert({"Barbara", "Los Angeles", 1939, 7});
    Print("by city", byCity);
    Print("by age", byAge);
    std::cout << "the oldest: " << byAge[0].Name << "; Grace is number "
              << *byAge.rank_of("Grace") + 1
              << "; from 1900 on: " << byAge.end() - byAge.lower_bound(1900) << '\n';

    people.erase_if([](const Contact& contact) { return contact.Owed == 0; });
    std::cout << "who owe:";
    for (const Contact* contact : people.sorted_by(zorvane::descending(&Contact::Owed)))
        std::cout << ' ' << contact->Name << ' ' << contact->Owed;
    std::cout << '\n';
    try {
        std::cout << people.at("Grace").City << '\n';
    } catch (const std::out_of_range& missing) {
        std::cout << missing.what() << '\n';
    }
}
