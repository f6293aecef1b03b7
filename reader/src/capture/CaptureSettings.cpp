#include "capture/CaptureSettings.h"

#include "core/ReaderService.h"
#include "core/SettingsLoader.h"

#include <algorithm>
#include <cmath>

namespace zyr {

ZyrReaderSettings CaptureSettings::effective(const ZyrReaderSettings* given) {
    if (given != nullptr)
        return *given;
    if (cameraService().running())
        return cameraService().state().settings;
    ZyrReaderSettings defaults;
    SettingsLoader::fillDefaults(defaults);
    return defaults;
}

double CaptureSettings::threshold(const ZyrReaderSettings& settings) {
    const double value = settings.DarkObjectDetect ? float(settings.DarkObjectValue)
                                                   : float(settings.VisibleParameters.DetectThreshold);
    return std::isfinite(value) ? value : 0;
}

FindParameters CaptureSettings::find(const ZyrReaderSettings& settings, const ZyrLocateSettings* locate) {
    FindParameters find;
    find.threshold = threshold(settings);
    find.minimumArea = std::max<int64_t>(1, locate != nullptr ? int32_t(locate->MinimumArea)
                                                              : int32_t(settings.Locate.MinimumArea));
    return find;
}

} // namespace zyr
