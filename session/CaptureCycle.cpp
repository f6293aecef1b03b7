#include "CaptureCycle.h"

#include "CaptureOptions.h"
#include "CaptureSettingsCheck.h"
#include "JobContext.h"
#include "SessionPaths.h"
#include "TestSession.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace {

// Process-wide and unguarded: only one capture runs at a time.
bool sideToggle = false;

std::string Format(const char* format, const std::string& folder, int32_t number) {
    char text[64];
    std::snprintf(text, sizeof text, format, number);
    return folder + text;
}

std::string ApplicationFolder() {
    const ZyrReaderSettings& reader = ReaderSession::Settings();
    return SessionPaths::FolderWithSeparator(reader.ApplicationFolder, sizeof reader.ApplicationFolder);
}

} // namespace

CaptureCycle::CaptureCycle(TestSession& session) : m_session(session) {
    sleep = [](int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); };
    clockMs = [] {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    };
}

void CaptureCycle::SingleImageCallback(void* user, int32_t, int32_t, uint32_t, ZyrImage* image) {
    *static_cast<ZyrImage**>(user) = image;
}

void CaptureCycle::TwoSidedCallback(void* user, int32_t, int32_t, uint32_t, ZyrImage* image) {
    ZyrImage** pair = static_cast<ZyrImage**>(user);
    if (!sideToggle) {
        pair[1] = image;
        sideToggle = true;
    } else {
        pair[0] = image;
        sideToggle = false;
    }
}

void CaptureCycle::SetSideToggle(bool on) {
    sideToggle = on;
}

void CaptureCycle::ZeroLocations() {
    m_side1 = ZyrLocation{};
    m_side2 = ZyrLocation{};
}

bool CaptureCycle::CheckImageSettings() {
    if (CaptureSettingsCheck::SameImageSettings(m_session.plugins, m_session.imageSettings)) {
        return true;
    }
    m_session.view.ShowMessage(MessageKind::Exclamation, CaptureSettingsCheck::kDifferentSettingsText);
    return false;
}

uint32_t CaptureCycle::CaptureJob(JobContext& job) {
    const uint32_t result = Run(job, false);
    m_session.view.RedrawAll();
    return result;
}

uint32_t CaptureCycle::CaptureMultiJob(JobContext& job) {
    uint32_t result = Run(job, false);
    while (result == 0) {
        result = Run(job, true);
    }
    return result;
}

uint32_t CaptureCycle::WaitForRemoval(JobContext& job) {
    ZyrReaderSettings& reader = ReaderSession::Settings();
    for (int countdown = kRemovalTurns; m_documentPresent != 0 && countdown >= 1;) {
        const int32_t result = ZyrReader_LocateDocumentTwoSidedEx(
            0, 0, &m_side1, &m_side2, &m_documentPresent, &reader, &reader.Detect, &reader.Locate, true, 0,
            &reader.Process, &reader.Side, &reader.Feed, 0, false, false, &m_detectionFlag);
        sleep(100);
        if (result != 0) {
            ZyrReader_DocumentProcessingComplete();
            return static_cast<uint32_t>(result);
        }
        if (m_documentPresent == 0) {
            break;
        }
        char text[96];
        std::snprintf(text, sizeof text, kCountdownFormat, countdown);
        job.SetStatusText(text);
        --countdown;
        sleep(1000);
    }
    return 0;
}

uint32_t CaptureCycle::Run(JobContext& job, bool repeat) {
    TestSession& s = m_session;
    const bool visible = s.useVisibleImage;
    const bool crop = s.crop;
    const bool dark = s.darkObjectDetect != 0;

    ZyrImageSettings* chosen = CaptureSettingsCheck::Choose(s.plugins, s.imageSettings);
    if (chosen == nullptr) {
        s.view.ShowMessage(MessageKind::Exclamation, CaptureSettingsCheck::kNoSettingsText);
        return 0;
    }
    for (PictureId picture : {PictureId::Main, PictureId::Side1, PictureId::Side2}) {
        s.ShowImage(picture, nullptr);
    }
    ZyrReaderSettings& reader = ReaderSession::Settings();
    const bool twoSided = reader.TwoSided != 0;
    if (twoSided) {
        s.view.ShowSideViews(crop);
        sleep(500);
    }
    ZeroLocations();
    m_documentPresent = 1;
    if (repeat) {
        if (const uint32_t result = WaitForRemoval(job)) {
            return result;
        }
    }

    job.SetStatusText(kWaitingText);
    if (twoSided && m_documentPresent != 0) {
        ZyrReader_InsertDocument();
    }
    const int32_t detected = ZyrReader_CameraDetectDocumentTwoSidedEx(
        true, 0, 0, &m_side1, &m_side2, &reader, &reader.Detect, &reader.Locate, 0, 0, 0, 0, 0,
        &reader.Process, &reader.Side, &reader.Feed, 0, nullptr, true, true, &m_detectionFlag);
    if (detected != 0) {
        ZyrReader_DocumentProcessingComplete();
        return static_cast<uint32_t>(detected);
    }

    job.SetStatusText(kProcessingText);
    ZyrImage* snapshot = nullptr;
    ZyrImage* processed = nullptr;
    ZyrImageSettings copy;
    ZyrImageSettings* record = chosen;
    if (visible && m_detectionFlag == 0) {
        copy = *chosen;
        CaptureOptions::ApplyVisibleOverride(copy, reader, crop);
        record = &copy;
    }
    // Without a copy this writes into the plug-in's shared record, as designed.
    record->Camera.DetectThreshold = CaptureOptions::DetectionValue(reader, dark, m_detectionFlag);
    const uint32_t options = CaptureOptions::OptionWord(*record, reader, crop);
    const uint32_t optional = CaptureOptions::OptionalValue(*record);

    ZyrReader_CameraTakeSnapshot(true, record->LightMask, 15, &record->Camera, &reader, &SingleImageCallback,
                                 &snapshot, 0, nullptr);
    const int64_t start = clockMs();
    const int32_t result = ZyrReader_ImagePostProcessImage(
        true, snapshot, record->LightMask, record->Camera.OutputDpi, record->Colour == 1, options,
        record->ProcessingMode, optional, record->Camera.OutputScale, &reader, &reader.Locate, &m_side1,
        &SingleImageCallback, &processed, 0, nullptr, &reader.Process);
    if (result == 0) {
        const uint32_t elapsed = static_cast<uint32_t>(clockMs() - start);
        s.stats.lastImageProcessMs = elapsed;
        s.stats.totalImageProcessMs += elapsed;
        const int32_t number = ++s.imageNumber;
        // Shown, saved and decoded from the session's own copy.
        const std::shared_ptr<const ZyrImage> image = ImageFileLoader::Copy(processed);
        s.ShowImage(PictureId::Main, image);
        sleep(500);
        s.SavePicturePng(PictureId::Main, Format("Glyphor_%d.png", ApplicationFolder(), number % 2));
        if (!twoSided) {
            s.decode.Run(image.get(), 0);
        } else {
            ProcessTwoSided(snapshot, *record, options, optional, number);
        }
    }
    if (snapshot != nullptr) {
        ZyrReader_DestroyCachedObject(snapshot);
    }
    if (processed != nullptr) {
        ZyrReader_DestroyCachedObject(processed);
    }
    ZyrReader_DocumentProcessingComplete();
    ZeroLocations();
    return 0;
}

void CaptureCycle::ProcessTwoSided(const ZyrImage* snapshot, const ZyrImageSettings& record, uint32_t options,
                                   uint32_t optional, int32_t number) {
    TestSession& s = m_session;
    ZyrReaderSettings& reader = ReaderSession::Settings();
    const bool crop = s.crop;
    SetSideToggle(true);
    ZeroLocations();
    ZyrImage* sides[2] = {nullptr, nullptr};
    const int32_t result = ZyrReader_ImagePostProcessImageTwoSided(
        true, snapshot, record.LightMask, record.Camera.OutputDpi, record.Colour == 1,
        options | ZYR_OPT_TWO_SIDED | (crop ? ZYR_OPT_CROP : 0u), record.ProcessingMode, optional,
        record.Camera.OutputScale, &reader, &reader.Locate, &m_side1, &m_side2, &TwoSidedCallback, sides, 0,
        nullptr, &reader.Process, &reader.Side);
    if (result == 0) {
        const std::string folder = ApplicationFolder();
        ++s.imageNumber;
        const std::shared_ptr<const ZyrImage> side1 = ImageFileLoader::Copy(sides[0]);
        s.decode.Run(side1.get(), 1);
        if (crop) {
            s.ShowImage(PictureId::Side1, side1);
            s.SavePicturePng(PictureId::Side1, Format("GlyphorSide1_%d.png", folder, number % 2));
        }
        ++s.imageNumber;
        const std::shared_ptr<const ZyrImage> side2 = ImageFileLoader::Copy(sides[1]);
        s.decode.Run(side2.get(), 2);
        if (crop) {
            s.ShowImage(PictureId::Side2, side2);
            s.SavePicturePng(PictureId::Side2, Format("GlyphorSide2_%d.png", folder, number % 2));
            sleep(500);
        }
    }
    for (ZyrImage* side : sides) {
        if (side != nullptr) {
            ZyrReader_DestroyCachedObject(side);
        }
    }
}
