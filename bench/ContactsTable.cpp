// 100,000 contacts kept in four orders; then a hundred times one more, and a page of its city.
#include "bench/ContactsData.h"
#include "zorvane/table/Table.h"

int main() {
    const Report report;
    std::mt19937 random(1);
    zorvane::Table<Contact, &Contact::Name> contacts;
    const auto byName = contacts.order(&Contact::Name);
    const auto byCity = contacts.order(&Contact::City, zorvane::descending(&Contact::Born));
    const auto byAge = contacts.order(&Contact::Born);
    const auto byOwed = contacts.order(zorvane::descending(&Contact::Owed));
    while (contacts.size() < 100'000) contacts.insert(AnyContact(random));
    double sum = 0;
    for (int i = 0; i < 100; ++i) {
        const auto [added, isNew] = contacts.insert(AnyContact(random));
        int row = 0;
        for (const Contact& contact : byCity.equal_range(added->City)) {
            sum += contact.Born + contact.Owed;
            if (++row == 20) break;
        }
    }
    sum += byName[0].Born + byAge[0].Born + byOwed[0].Owed;
    report.Print("Table", sum);
}
