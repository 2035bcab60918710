// A thousand profiles as a JSON text.
#include <nlohmann/json.hpp>

#include "bench/SettingsData.h"

struct OldProfile {
    std::string Name;
    int Colour = 0;
    std::vector<std::string> Tags;
    NLOHMANN_DEFINE_TYPE_INTRUSIVE(OldProfile, Name, Colour, Tags)
};
struct Profile {
    std::string Name;
    int Colour = 0;
    std::vector<std::string> Tags;
    double Volume = kUsualVolume;
    NLOHMANN_DEFINE_TYPE_INTRUSIVE_WITH_DEFAULT(Profile, Name, Colour, Tags, Volume)
};

int main() {
    const Report report;
    std::vector<OldProfile> profiles;
    for (int i = 0; i < kProfiles; ++i) profiles.push_back({ProfileName(i), i, ProfileTags(i)});
    double sum = 0;
    std::size_t bytes = 0;
    for (int round = 0; round < kRounds; ++round) {
        const std::string written = nlohmann::json(profiles).dump();
        bytes = written.size();

        for (const auto& profile : nlohmann::json::parse(written).get<std::vector<Profile>>())
            sum += profile.Colour + profile.Volume + static_cast<double>(profile.Tags.size());
    }
    report.Print("nlohmann-json", sum, bytes);
}
