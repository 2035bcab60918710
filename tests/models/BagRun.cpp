#include "tests/models/BagModel.h"
#include "tests/models/StepRun.h"
#include "tests/unit/propbag/Words.h"
#include "tests/unit/runtime_files/Folder.h"
#include "zorvane/platform/Classes.h"
#include "zorvane/platform/Font.h"
#include "zorvane/propbag/BagFile.h"
#include "zorvane/propbag/IZVPropertyBag.h"

namespace zorvane {
namespace {

// An object with one property.
class Pet : public IZVPropertyBag {
  public:
    explicit Pet(std::int32_t legs = 0) : Legs(legs) {}
    [[nodiscard]] Text TypeName() const override { return u"Pet"; }
    [[nodiscard]] Text ClassName() const override { return Class; }
    void InitProperties() override { Legs = -1; }
    [[nodiscard]] Variant ParentObject() override { return Variant(); }
    void ReadProperties(ZVPropertyBag& bag) override {
        Legs = bag.ReadProperty(u"Legs", {.Default = -2}).ToLong();
    }
    void WriteProperties(ZVPropertyBag& bag) override { bag.WriteProperty(u"Legs", Legs); }
    std::int32_t Legs;
    Text Class = u"ZorvaneDemoProject.Pet";  // "": its words alone are kept
};

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
                                longs,      number,     number,    Variant::FromError(5)};
        return some[Below(std::size(some))];
    }
    // What may be left out is none then.
    std::optional<Variant> Maybe(const Variant& value) {
        return Chance(60) ? std::nullopt : std::optional(value);
    }
    static Variant GivenOrOmitted(const std::optional<Variant>& value) {
        return value.value_or(Variant::FromError(-2147352572));
    }

    Object& Ours() override { return bag_; }
    // An object by what it holds; other values by themselves.
    std::string Shown(const Variant& value) override {
        if (value.IsArray()) return "array of " + std::to_string(value.AsArray().Count());
        if (!value.IsObject()) return StepRun::Shown(value);
        if (!value.AsObject()) return "no object";
        if (const auto pet = ViewAs<Pet>(value.AsObject())) {
            return "pet" + std::to_string(pet->Legs);
        }
        return "font " + ViewAs<Font>(value.AsObject())->Value.Name.ToUtf8();
    }

    void Operate() override {
        const unsigned choice = Below(100);
        if (choice < 15) return Add();
        if (choice < 45) return Write();
        if (choice < 65) return Read();
        if (choice < 90) return Look();
        Rest();
    }

    void Add() {
        const Variant item = Chance(90) ? SomePlain() : Variant(MakeObject<Pet>(4));
        const Text name = SomeName();
        const auto before = Maybe(SomeKeyIndex());
        const auto after = Maybe(Chance(5) ? Variant(2147483647) : SomeKeyIndex());
        const std::int32_t position = Chance(50) ? 0 : SomePosition();
        const bool raising = Chance(50);
        Call("Add", {item, name, GivenOrOmitted(before), GivenOrOmitted(after), position, raising},
             [&] {
                 return model_.Add(item, name, {before, after, position, raising});
             });
    }

    void Write() {
        const Text name = SomeName();
        const std::int32_t index = Chance(3) ? SomePosition() : 0;
        const auto pet = MakeObject<Pet>(static_cast<std::int32_t>(Below(5)));
        if (Chance(20)) pet->Class = Text();
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
        Call("WriteProperty", {name, value, GivenOrOmitted(byDefault), index},
             [&] { model_.write(name, value, words, objName, equal, index); });
    }

    // Among the values that are tried here: False is 0, and Null and arrays equal nothing.
    static bool EqualsDefault(const Variant& value, const Variant& byDefault) {
        const auto isNumber = [](const Variant& v) { return v.IsNumber() && !v.IsEmpty(); };
        if (isNumber(value) && isNumber(byDefault)) return value.ToLong() == byDefault.ToLong();
        return value == byDefault && !value.IsNull() && !value.IsArray();
    }

    void Read() {
        const Text name = SomeName();
        const std::int32_t index = Chance(70) ? 0 : SomePosition();
        const auto ours = MakeObject<Pet>(77);
        const auto models = MakeObject<Pet>(77);
        const Variant plain[] = {GivenOrOmitted({}), u"default", Ref<Object>()};
        const unsigned kind = Below(4);
        Call("ReadProperty", {name, kind < 3 ? plain[kind] : Variant(ours), index}, [&] {
            return ModelRead(name, kind < 3 ? plain[kind] : Variant(models), models, index);
        });
    }

    Variant ModelRead(const Text& name, const Variant& byDefault, const Ref<Pet>& pet,
                      std::int32_t index) {
        const bool byIndex = index >= 1 && index <= model_.count();
        const std::int32_t found = model_.resolve(byIndex ? Variant(index) : Variant(name));
        const bool inPlace = byDefault == Variant(pet);
        if (inPlace && (found != 0 || model_.sorted)) {
            pet->Legs = found == 0 ? -1 : ValueIn(model_.at(found).item, u"legs", -2).ToLong();
        }
        if (inPlace || found == 0) {
            return byDefault.Type() == VarType::Error ? Variant() : byDefault;
        }
        const auto& [words, number, objName, key, code, slot] = model_.at(found);
        if (objName == u"\r") return Ref<Object>();
        if (objName == u"Font") {
            return MakeObject<Font>(FontValue{.Name = ValueIn(words, u"name", u"Roman").ToText()});
        }
        return objName.Empty() ? words : MakeObject<Pet>(ValueIn(words, u"legs", -2).ToLong());
    }
    // A property out of an object's words.
    static Variant ValueIn(const Variant& words, const char16_t* name, Variant value) {
        static_cast<void>(BagFrom(words).ItemFn(name, value));
        return value;
    }

    void Look() {
        const Variant v = SomeKeyIndex();
        const std::int32_t position = SomePosition();
        const std::int32_t at = model_.resolve(v);
        const auto item = [&] { return model_.Item(v); };
        DoChosen(
            Below(12),
            {{1, "Item", {v}, item},
             {2, "ItemFn", {v}, item},
             {3, "ObjName", {v}, [&] { return model_.find(v, "ObjName").itemString; }},
             {4, "Key", {position}, [&] { return model_.Key(position); }},
             {5, "NewEnum", [&] { return Joined(bag_.NewEnum()); },
              [&] {
                  std::vector<Variant> items;
                  for (const auto& row : model_.rows) items.push_back(row.item);
                  return Joined(items);
              }},
             {6, "PropIsObject", {v}, [&] { return at != 0 && !model_.at(at).itemString.Empty(); }},
             {7, "CopyItemValue", {v}, [&] { return at == 0 ? Variant() : model_.at(at).item; }},
             OnEither(8, "ItemFn, quiet", bag_, model_,
                      [&](auto& either) {
                          Variant value = u"untouched";
                          return std::to_string(either.ItemFn(v, value)) + Shown(value);
                      }),
             {12, "Remove", {v}, [&] { static_cast<void>(model_.Remove(v, true)); }}});
    }

    void Rest() {
        const auto step = static_cast<std::int32_t>(Chance(5) ? 40000 : Below(80));
        const bool flag = Chance(50);
        if (Chance(20)) return Repeats();
        if (Chance(10)) return Load();
        if (Chance(20)) return Copy(flag);
        if (Chance(model_.sorted ? 2 : 20)) {
            return Call("Clear", {}, [&] { model_ = BagModel(); });
        }
        DoChosen(Below(3), {{1, "Granularity", [&] { bag_.Set(u"granularity", step); },
                             [&] { model_.granularity = std::clamp(step, 16, 32768); }},
                            {2, "Changed", [&] { bag_.Set(u"changed", flag); },
                             [&] { model_.changed = flag; }},
                            {3, "Contents", [&] { bag_.Set(u"contents", bag_.Get(u"Contents")); },
                             [&] { model_.reopen(); }}});
    }

    // Only words can make a bag that is sorted and whose names may repeat.
    void Repeats() {
        Array words = bag_.Contents();
        words.MutableElements<std::int16_t>().back() = 0;
        Do(
            "repeated names", [&] { bag_.SetContents(words); },
            [&] {
                model_.reopen();
                model_.unique = model_.rows.empty();
            });
    }

    // The bag's own words, out of a file.
    void Load() {
        static const Folder folder;
        const Array words = bag_.Contents();
        folder.Put("bag",
                   {reinterpret_cast<const char*>(words.Bytes().data()), words.Bytes().size()});
        Do(
            "LoadBagFile", [&] { return LoadBagFile(folder.At("bag"), bag_, 20).Error.message(); },
            [&] { return model_.reopen(), std::error_code().message(); });
    }

    void Copy(bool mark) {
        Do(
            "CopyFrom",
            [&] {
                ZVPropertyBag copy;
                copy.WriteProperty(u"old", 1);
                const Variant arguments[] = {Ref<Object>(&bag_), mark};
                copy.Call(u"CopyFrom", arguments);
                swap(copy, bag_);
            },
            [&] { model_.changed = model_.changed || mark; });
    }

    std::string StateDiffers(bool) override {
        if (bag_.Get(u"Count") != Variant(model_.count())) return "Count differs";
        if (bag_.Get(u"Sorted") != Variant(model_.sorted)) return "Sorted differs";
        if ((bag_.Contents().Words().back() != 0) != model_.unique) return "UniqueNames differs";
        if (bag_.Get(u"Changed") != Variant(model_.changed)) return "Changed differs";
        if (bag_.Get(u"Granularity") != Variant(model_.granularity)) return "Granularity differs";
        std::int32_t position = 0;
        for (const Variant& value : bag_) {
            const BagModel::Row& row = model_.at(++position);
            if (value == row.item && bag_.Key(position) == row.key &&
                bag_.ObjName(position) == row.itemString) {
                continue;
            }
            return "entry " + std::to_string(position) + " is " + bag_.Key(position).ToUtf8() +
                   "=" + Shown(value) + ", not " + row.key.ToUtf8() + "=" + Shown(row.item);
        }
        return {};
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
