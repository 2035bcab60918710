// A thousand profiles through a binary archive that keeps the number of a class's version.
#include <sstream>

#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include "bench/SettingsData.h"

struct OldProfile {
    std::string Name;
    int Colour = 0;
    std::vector<std::string> Tags;

    template <class Archive>
    void serialize(Archive& archive, std::uint32_t) {
        archive(Name, Colour, Tags);
    }
};
struct Profile {
    std::string Name;
    int Colour = 0;
    std::vector<std::string> Tags;
    double Volume = kUsualVolume;

    template <class Archive>
    void serialize(Archive& archive, std::uint32_t version) {
        archive(Name, Colour, Tags);
        if (version > 1) archive(Volume);
    }
};
CEREAL_CLASS_VERSION(OldProfile, 1)
CEREAL_CLASS_VERSION(Profile, 2)

int main() {
    const Report report;
    std::vector<OldProfile> profiles;
    for (int i = 0; i < kProfiles; ++i) profiles.push_back({ProfileName(i), i, ProfileTags(i)});
    double sum = 0;
    std::size_t bytes = 0;
    for (int round = 0; round < kRounds; ++round) {
        std::ostringstream written;
        cereal::BinaryOutputArchive{written}(profiles);
        bytes = written.view().size();

        std::istringstream stored(written.str());
        std::vector<Profile> read;
        cereal::BinaryInputArchive{stored}(read);
        for (const Profile& profile : read)
            sum += profile.Colour + profile.Volume + static_cast<double>(profile.Tags.size());
    }
    report.Print("cereal", sum, bytes);
}
