#include "platform/Classes.h"
#include "platform/Font.h"
#include "propbag/IZVPropertyBag.h"
#include "propbag/ZVPropertyBag.h"
#include "tests/models/BagModel.h"
#include "tests/models/StepRun.h"
#include "tests/unit/propbag/Words.h"

namespace zorvane {
namespace {

// An object with one property.
class Pet : public IZVPropertyBag {
  public:
    explicit Pet(std::int32_t legs = 0) : Legs(legs) {}
    [[nodiscard]] Text TypeName() const override { return u"Pet"; }
    [[nodiscard]] Text ClassName() const override { return u"ZorvaneDemoProject.Pet"; }
    void InitProperties() override { Legs = -1; }
    [[nodiscard]] Variant ParentObject() override { return Variant(); }
    void ReadProperties(ZVPropertyBag& bag) override {
        Legs = bag.ReadProperty(u"Legs", {.Default = -2}).ToLong();
    }
    void WriteProperties(ZVPropertyBag& bag) override { bag.WriteProperty(u"Legs", Legs); }
    std::int32_t Legs;
};

// An object as text, by what it holds; other values by themselves.
std::string Shown(const Variant& value) {
    if (value.IsObject()) {
        if (!value.AsObject()) return "no object";
        if (const auto pet = ViewAs<Pet>(value.AsObject()))
            return "pet" + std::to_string(pet->Legs);
        if (const auto font = ViewAs<Font>(value.AsObject()))
            return "font " + font->Value.Name.ToUtf8();
        return value.AsObject()->TypeName().ToUtf8();
    }
    if (value.IsArray()) return "array of " + std::to_string(value.AsArray().Count());
    std::ostringstream shown;
    shown.exceptions(std::ios::badbit);  // lack of memory is no text
    shown << value;
    return shown.str();
}

class Run : public StepRun {
  public:
    explicit Run(std::uint32_t kind) : universe_(kind % 5 == 0 ? 500 : 12) {
        CreatableClasses().Register(u"ZorvaneDemoProject.Pet",
                                    [] { return Ref<Object>(MakeObject<Pet>()); });
    }

  private:
    Text SomeName() {
        static const Text kOdd[] = {"", "_", "Ab", "aB", u"\u00C4", u"\u00E4", u"\xD800", "ABC"};
        if (Chance(20)) return kOdd[Below(std::size(kOdd))];
        return Text(Chance(50) ? "name" : "NAME") + Text(std::to_string(Below(universe_)));
    }
    std::int32_t SomePosition() {
        return static_cast<std::int32_t>(Below(static_cast<unsigned>(model_.count()) + 4)) - 1;
    }
    Variant SomeKeyIndex() {
        if (Chance(50)) return SomeName();
        const Variant others[] = {static_cast<std::int16_t>(SomePosition()), 1.0, Variant::Null(),
                                  SomePosition(), SomePosition()};
        return others[Below(std::size(others))];
    }
    Variant SomePlain() {
        const auto number = static_cast<std::int32_t>(Below(3));
        const Array longs(VarType::Long, 1, static_cast<std::int32_t>(Below(5)));
        const Variant some[] = {SomeName(), Chance(50), Variant(), Variant::Null(),
                                longs,      number,     number,    number};
        return some[Below(std::size(some))];
    }
    std::optional<Variant> Maybe(const Variant& value) {
        return Chance(60) ? std::nullopt : std::optional(value);
    }

    void Operate() override {
        const unsigned choice = Below(100);
        if (choice < 15) return Add();
        if (choice < 45) return Write();
        if (choice < 65) return Read();
        if (choice < 75) return Remove();
        if (choice < 90) return Look();
        Rest();
    }

    void Add() {
        const Variant item = Chance(90) ? SomePlain() : Variant(MakeObject<Pet>(4));
        const Text name = Drawn(SomeName());
        const auto before = Maybe(Drawn(SomeKeyIndex()));
        const auto after = Maybe(Chance(5) ? Variant(2147483647) : SomeKeyIndex());
        const std::int32_t position = Chance(50) ? 0 : SomePosition();
        const bool raising = Chance(50);
        Do(
            "Add",
            [&] {
                return bag_.Add(item, name, {before, after, position, raising});
            },
            [&] { return model_.add(item, name, before, after, position, raising); });
    }

    void Write() {
        const Text name = Drawn(SomeName());
        const std::int32_t index = Chance(1) ? SomePosition() : 0;
        const auto pet = MakeObject<Pet>(static_cast<std::int32_t>(Below(5)));
        const auto font = MakeObject<Font>(FontValue{.Name = SomeName()});
        const Variant values[] = {SomePlain(), SomePlain(), SomePlain(), pet, font, Ref<Object>()};
        const Variant value = values[Below(std::size(values))];
        const auto byDefault = Maybe(Chance(50) ? SomePlain() : value);
        Variant words = value;
        Text objName;
        if (value.IsObject()) {
            ZVPropertyBag nested;
            words = Variant();
            objName = u"\r";
            if (value == Variant(pet)) {
                nested.WriteProperty(u"Legs", pet->Legs);
                objName = pet->ClassName();
            } else if (value == Variant(font)) {
                nested.WriteProperty(u"Name", font->Value.Name, {.Default = u"Roman"});
                nested.WriteProperty(u"Weight", font->Value.Weight);
                objName = u"Font";
            }
            if (value.AsObject()) words = nested.Contents();
        }
        const bool equal = byDefault && EqualsDefault(value, *byDefault);
        Do(
            "WriteProperty",
            [&] { bag_.WriteProperty(name, value, {.Default = byDefault, .Index = index}); },
            [&] { model_.write(name, value, words, objName, equal, index); });
    }

    // Among the values that are tried here: False is 0, and Null and arrays equal nothing.
    static bool EqualsDefault(const Variant& value, const Variant& byDefault) {
        const auto isNumber = [](const Variant& v) { return v.IsNumber() && !v.IsEmpty(); };
        if (isNumber(value) && isNumber(byDefault)) return value.ToLong() == byDefault.ToLong();
        return value == byDefault && !value.IsNull() && !value.IsArray();
    }

    void Read() {
        const Text name = Drawn(SomeName());
        const std::int32_t index = Chance(70) ? 0 : SomePosition();
        const auto ours = MakeObject<Pet>(77);
        const auto models = MakeObject<Pet>(77);
        const unsigned kind = Below(4);
        const auto byDefault = [&](const Ref<Pet>& pet) -> std::optional<Variant> {
            if (kind == 0) return std::nullopt;
            return kind == 1 ? Variant(u"default") : kind == 2 ? Variant(Ref<Object>()) : pet;
        };
        Do(
            "ReadProperty",
            [&] {
                return Shown(bag_.ReadProperty(name, {byDefault(ours), index}));
            },
            [&] { return Shown(ModelRead(name, byDefault(models), models, index)); });
    }

    Variant ModelRead(const Text& name, std::optional<Variant> byDefault, const Ref<Pet>& pet,
                      std::int32_t index) {
        const bool byIndex = index >= 1 && index <= model_.count();
        const std::int32_t found = byIndex ? index : model_.find(name);
        const bool inPlace = byDefault && *byDefault == Variant(pet);
        if (inPlace && (found != 0 || model_.sorted)) {
            pet->Legs = found == 0 ? -1 : ValueIn(model_.at(found).value, u"legs", -2).ToLong();
        }
        if (inPlace || found == 0) return byDefault.value_or(Variant());
        const BagModel::Row& row = model_.at(found);
        if (row.objName == u"\r") return Ref<Object>();
        if (row.objName == u"Font")
            return MakeObject<Font>(
                FontValue{.Name = ValueIn(row.value, u"name", u"Roman").ToText()});
        if (!row.objName.Empty()) return MakeObject<Pet>(ValueIn(row.value, u"legs", -2).ToLong());
        return row.value;
    }
    // A property out of an object's words.
    static Variant ValueIn(const Variant& words, const char16_t* name, Variant value) {
        ZVPropertyBag bag;
        bag.SetContents(words);
        static_cast<void>(bag.ItemFn(name, value));
        return value;
    }

    void Remove() {
        const Variant keyIndex = Drawn(SomeKeyIndex());
        Do(
            "Remove", [&] { bag_.Remove(keyIndex); },
            [&] {
                static_cast<void>(model_.entry(keyIndex, "Remove", "Key = "));
                model_.removeAt(model_.resolve(keyIndex));
            });
    }

    void Look() {
        const Variant v = Drawn(SomeKeyIndex());
        const std::int32_t position = SomePosition();
        const std::int32_t at = model_.resolve(v);
        DoChosen(Below(7), {{1, "Item", [&] { return Shown(bag_.Item(v)); },
                             [&] { return Shown(model_.entry(v, "Item", "KeyIndex = ").value); }},
                            {2, "ItemFn of one", [&] { return Shown(bag_.ItemFn(v)); },
                             [&] { return Shown(model_.entry(v, "Item", "KeyIndex = ").value); }},
                            {3, "ObjName", [&] { return bag_.ObjName(v); },
                             [&] { return model_.entry(v, "ObjName", "KeyIndex = ").objName; }},
                            {4, "Key", [&] { return bag_.Key(position); },
                             [&] { return model_.entry(position, "Key", "Index = ").name; }},
                            {5, "NewEnum",
                             [&] {
                                 std::string all;
                                 for (const Variant& value : bag_.NewEnum())
                                     all += Shown(value) + ',';
                                 return all;
                             },
                             [&] {
                                 std::string all;
                                 for (const auto& row : model_.rows) all += Shown(row.value) + ',';
                                 return all;
                             }},
                            {6, "PropIsObject", [&] { return bag_.PropIsObject(v); },
                             [&] { return at != 0 && !model_.at(at).objName.Empty(); }},
                            {7, "ItemFn",
                             [&] {
                                 Variant value = u"untouched";
                                 const bool found = bag_.ItemFn(v, value);
                                 return Shown(value) + (found ? "found" : "");
                             },
                             [&] {
                                 return at == 0 ? Shown(u"untouched")
                                                : Shown(model_.at(at).value) + "found";
                             }}});
    }

    void Rest() {
        const auto step = static_cast<std::int32_t>(Below(80));
        const bool flag = Chance(50);
        if (Chance(20)) return Repeats();
        if (Chance(20)) return Copy(flag);
        if (Chance(model_.sorted ? 2 : 20)) {
            return Do(
                "Clear", [&] { bag_.Clear(); }, [&] { model_ = BagModel(); });
        }
        DoChosen(Below(3),
                 {{1, "Granularity", [&] { bag_.SetGranularity(step); },
                   [&] { model_.granularity = std::max(16, step); }},
                  {2, "Changed", [&] { bag_.SetChanged(flag); }, [&] { model_.changed = flag; }},
                  {3, "Contents", [&] { bag_.SetContents(bag_.Contents()); },
                   [&] { model_.reopen(); }}});
    }

    // Only words can make a bag that is sorted and whose names may repeat.
    void Repeats() {
        Words words = WordsOf(bag_);
        words.back() = 0;
        Do(
            "repeated names", [&] { bag_.SetContents(Array::OfWords(words)); },
            [&] {
                model_.reopen();
                model_.unique = model_.rows.empty();
            });
    }

    void Copy(bool mark) {
        Do(
            "CopyFrom",
            [&] {
                ZVPropertyBag copy;
                copy.WriteProperty(u"old", 1);
                copy.CopyFrom(bag_, mark);
                swap(copy, bag_);
            },
            [&] { model_.changed = model_.changed || mark; });
    }

    std::string StateDiffers(bool) override {
        if (bag_.Count() != model_.count()) return "Count differs";
        if (bag_.Sorted() != model_.sorted) return "Sorted differs";
        if (bag_.Changed() != model_.changed) return "Changed differs";
        if (bag_.Granularity() != model_.granularity) return "Granularity differs";
        std::int32_t position = 0;
        for (const Variant& value : bag_) {
            const BagModel::Row& row = model_.at(++position);
            if (value == row.value && bag_.Key(position) == row.name &&
                bag_.ObjName(position) == row.objName) {
                continue;
            }
            return "entry " + std::to_string(position) + " is " + bag_.Key(position).ToUtf8() +
                   "=" + Shown(value) + ", not " + row.name.ToUtf8() + "=" + Shown(row.value);
        }
        return {};
    }

    // Writing by position ends the order by name before anything else.
    std::string FailedStateDiffers() override {
        BagModel model = model_;
        if (!bag_.Sorted()) model_.sorted = model_.unique = false;
        std::string differs = StateDiffers(true);
        std::swap(model_, model);
        return differs;
    }

    ZVPropertyBag bag_;
    BagModel model_;
    unsigned universe_;
};

}  // namespace

std::unique_ptr<StepRun> StartBag(std::uint32_t kind) {
    return std::make_unique<Run>(kind);
}

}  // namespace zorvane
