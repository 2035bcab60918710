// 100,000 contacts kept in four orders; then a hundred times one more, and a page of its city.
#include <boost/multi_index/composite_key.hpp>
#include <boost/multi_index/hashed_index.hpp>
#include <boost/multi_index/member.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index/sequenced_index.hpp>
#include <boost/multi_index_container.hpp>

#include "bench/ContactsData.h"

namespace mi = boost::multi_index;
using ByName = mi::member<Contact, std::string, &Contact::Name>;
using ByCity = mi::member<Contact, std::string, &Contact::City>;
using ByBorn = mi::member<Contact, int, &Contact::Born>;
using ByOwed = mi::member<Contact, double, &Contact::Owed>;
using Contacts = mi::multi_index_container<
    Contact, mi::indexed_by<mi::sequenced<>, mi::hashed_unique<ByName>, mi::ordered_unique<ByName>,
                            mi::ordered_non_unique<mi::composite_key<Contact, ByCity, ByBorn>,
                                                   mi::composite_key_compare<std::less<std::string>,
                                                                             std::greater<int>>>,
                            mi::ordered_non_unique<ByBorn>,
                            mi::ordered_non_unique<ByOwed, std::greater<double>>>>;

int main() {
    const Report report;
    std::mt19937 random(1);
    Contacts contacts;
    const auto& byName = contacts.get<2>();
    const auto& byCity = contacts.get<3>();
    const auto& byAge = contacts.get<4>();
    const auto& byOwed = contacts.get<5>();
    while (contacts.size() < 100'000) contacts.push_back(AnyContact(random));
    double sum = 0;
    for (int i = 0; i < 100; ++i) {
        const auto [added, isNew] = contacts.push_back(AnyContact(random));
        int row = 0;
        const auto [first, last] = byCity.equal_range(std::make_tuple(added->City));
        for (auto contact = first; contact != last; ++contact) {
            sum += contact->Born + contact->Owed;
            if (++row == 20) break;
        }
    }
    sum += byName.begin()->Born + byAge.begin()->Born + byOwed.begin()->Owed;
    report.Print("Boost.MultiIndex", sum);
}
