// A thousand profiles as objects of a property bag that write themselves, a hundred times.
#include "bench/SettingsData.h"
#include "zorvane/platform/ArrayRanges.h"
#include "zorvane/propbag/IZVPropertyBag.h"
#include "zorvane/propbag/ZVPropertyBag.h"

using zorvane::Text, zorvane::Variant, zorvane::ZVPropertyBag;

namespace {

int version = 1;  // of the program

struct Profile : zorvane::IZVPropertyBag {
    Text Name;
    std::int32_t Colour = 0;
    std::vector<Text> Tags;
    double Volume = kUsualVolume;

    Text TypeName() const override { return u"Profile"; }
    Text ClassName() const override { return u"Settings.Profile"; }
    Variant ParentObject() override { return {}; }
    void InitProperties() override {}
    void ReadProperties(ZVPropertyBag& bag) override {
        Name = bag.ReadProperty(u"Name").ToText();
        Colour = bag.ReadProperty(u"Colour", {.Default = Colour}).ToLong();
        Tags = zorvane::VectorOf<Text>(bag.ReadProperty(u"Tags").AsArray());
        Volume = bag.ReadProperty(u"Volume", {.Default = Volume}).ToDouble();
    }
    void WriteProperties(ZVPropertyBag& bag) override {
        bag.WriteProperty(u"Name", Name);
        bag.WriteProperty(u"Colour", Colour);
        bag.WriteProperty(u"Tags", zorvane::ArrayOf(Tags));
        if (version > 1) bag.WriteProperty(u"Volume", Volume);
    }
};

}  // namespace

int main() {
    const Report report;
    std::vector<zorvane::Ref<Profile>> profiles;
    for (int i = 0; i < kProfiles; ++i) {
        auto profile = zorvane::MakeObject<Profile>();
        profile->Name = ProfileName(i);
        profile->Colour = i;
        for (const std::string& tag : ProfileTags(i)) profile->Tags.emplace_back(tag);
        profiles.push_back(std::move(profile));
    }
    double sum = 0;
    std::size_t bytes = 0;
    for (int round = 0; round < kRounds; ++round) {
        version = 1;
        ZVPropertyBag written;
        for (const auto& profile : profiles) written.WriteProperty(profile->Name, profile);
        const zorvane::Array words = written.Contents();
        bytes = words.Bytes().size();

        version = 2;
        ZVPropertyBag read;
        read.SetContents(words);
        for (std::int32_t i = 1; i <= read.Count(); ++i) {
            auto profile = zorvane::MakeObject<Profile>();
            (void)read.ReadProperty(read.Key(i), {.Default = profile});
            sum += profile->Colour + profile->Volume + static_cast<double>(profile->Tags.size());
        }
    }
    report.Print("ZVPropertyBag", sum, bytes);
}
