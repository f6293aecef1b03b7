#pragma once

#include "SettingsReader.h"

#include <ZyrReaderLowLevelAPI.h>

#include <string>
#include <vector>

namespace kvdecode {

// The images a plug-in needs and the capture settings of each: [Images] Required=A,B lists the
// names, and a section named after each image holds its image-settings record, one key per field.
class ImageRequirements {
public:
    // Reads the requirements; a missing [Images] section gives defaultImage with defaultLight.
    // Failures go to the reader (a name too long for the record, a bad number, a section missing).
    void load(SettingsReader& reader, const std::string& defaultImage, const std::string& defaultLight);

    const std::vector<ZyrImageSettings>& images() const { return images_; }
    // Names joined by ",".
    std::string joinedNames() const;
    // True for "" (the first image) and for any required image name.
    bool accepts(const char* imageName) const;

private:
    std::vector<ZyrImageSettings> images_;
};

} // namespace kvdecode
