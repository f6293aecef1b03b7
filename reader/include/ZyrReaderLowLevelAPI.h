/*
 * ZyrReaderLowLevelAPI: the reader library's C interface.
 *
 * Everything a client of the reader library uses: settings, logging, camera and document capture,
 * image post-processing and format conversion, decoder plug-ins, AAMVA parsing and the release of
 * library-owned objects. All functions return 0 (ZYR_OK) on success and a ZyrReaderError code
 * otherwise, unless they are documented to return a boolean.
 *
 * Records are packed (1-byte alignment), integers are little-endian. Objects handed out by the
 * library (symbol results, images, AAMVA records) belong to the library until the client passes
 * them to ZyrReader_DestroyCachedObject; ZyrReader_DestroyCachedData frees whatever is left.
 */
#ifndef ZYRREADER_LOW_LEVEL_API_H
#define ZYRREADER_LOW_LEVEL_API_H

#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#endif

#if defined(ZYRREADER_BUILDING_LIBRARY)
#define ZYRREADER_API __attribute__((visibility("default")))
#else
#define ZYRREADER_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---------------------------------------------------------------------------------------------
 * Error codes
 * ------------------------------------------------------------------------------------------- */
typedef enum ZyrReaderError {
    ZYR_OK = 0,
    ZYR_ERR_NOT_INITIALISED = 1,     /* the subsystem the call needs was not initialised */
    ZYR_ERR_BAD_ARGUMENT = 2,        /* a null pointer, negative length or out-of-range value */
    ZYR_ERR_UNKNOWN_HANDLE = 3,      /* object or plug-in handle the library does not hold (or freed) */
    ZYR_ERR_FILE = 4,                /* a file could not be opened, read or written */
    ZYR_ERR_UNSUPPORTED_IMAGE = 5,   /* image bytes in a format the library does not read */
    ZYR_ERR_CORRUPT_IMAGE = 6,       /* image bytes that are truncated or damaged */
    ZYR_ERR_PLUGIN_LOAD = 7,         /* the file is not a loadable decoder plug-in */
    ZYR_ERR_PLUGIN_VERSION = 8,      /* the plug-in was built for another interface version */
    ZYR_ERR_NO_READER = 9,           /* no reader is connected */
    ZYR_ERR_PLUGIN_OPEN = 10,        /* the plug-in refused to open (bad settings file, ...) */
    ZYR_ERR_CANCELLED = 11,          /* ZyrReader_CameraCancelQueue ended the call */
    ZYR_ERR_BUFFER_TOO_SMALL = 12,   /* the caller's buffer cannot hold the result */
    ZYR_ERR_NOT_AAMVA = 13,          /* the bytes are not an AAMVA card data stream */
    ZYR_ERR_AAMVA_TRUNCATED = 14,    /* AAMVA header or subfile ends before its declared end */
    ZYR_ERR_AAMVA_EMPTY = 15,        /* no bytes were given to the parser */
    ZYR_ERR_OUT_OF_MEMORY = 16,
    ZYR_ERR_PLUGIN_DECODE = 17,      /* the plug-in reported a failure while decoding, or its host
                                        process sent a reply that makes no sense */
    ZYR_ERR_PLUGIN_CRASHED = 18,     /* the plug-in's host process died during the call */
    ZYR_ERR_PLUGIN_TIMEOUT = 19,     /* the plug-in ran past its time limit and was stopped */
    ZYR_ERR_DEVICE = 20,             /* the reader device failed (bad device folder, ...) */
    ZYR_ERR_NO_DOCUMENT = 21,        /* post-processing found no document on the platen */
    ZYR_ERR_ALREADY_INITIALISED = 22 /* reserved: initialising twice is accepted and returns 0 */
} ZyrReaderError;

/* Short English text for a code; never null. */
ZYRREADER_API const char* ZyrReader_ErrorText(int32_t code);

/* ---------------------------------------------------------------------------------------------
 * Records
 * ------------------------------------------------------------------------------------------- */
#pragma pack(push, 1)

#define ZYR_PATH_SIZE 1024

/* Camera parameters for one light (57 bytes). The reader settings hold one block per light; an
 * image-settings record carries the block of its own light at byte 76. */
typedef struct ZyrCameraParameters {
    uint32_t ExposureMicroseconds; /* +0  sensor exposure */
    uint32_t Gain;                 /* +4  analogue gain, 100 = x1 */
    uint32_t Brightness;           /* +8  0..255 */
    uint32_t Contrast;             /* +12 0..255 */
    uint32_t WhiteBalance;         /* +16 colour temperature in kelvin */
    uint32_t LedIntensity;         /* +20 0..100 per cent */
    float OutputScale;             /* +24 (record 100) scale of the post-processed image; 0 or 1 = none */
    float DetectThreshold;         /* +28 (record 104) grey level separating document from platen (the
                                      platen's own level decides which side documents are); 0 = chosen
                                      from the picture */
    uint32_t BorderPixels;         /* +32 (record 108) margin kept around a crop */
    uint32_t Sharpness;            /* +36 */
    uint32_t Saturation;           /* +40 */
    uint32_t OutputDpi;            /* +44 (record 120) resolution written into processed images */
    uint32_t CaptureResolution;    /* +48 (record 124) common value: sensor resolution in dpi */
    uint8_t AutoExposure;          /* +52 */
    uint8_t HardwareDeskew;        /* +53 (record 129) the camera straightens images itself */
    uint8_t Binning;               /* +54 (record 130) common value: pixel binning factor */
    uint8_t Reserved[2];           /* +55 */
} ZyrCameraParameters;

/* What a plug-in needs of a capture: one required image (146 bytes). */
typedef struct ZyrImageSettings {
    char ImageName[32];               /* 0   e.g. "VISIBLE_DOC"; NUL-terminated */
    char LightName[36];               /* 32  "IMAGE_VISIBLE", "IMAGE_IR" or "IMAGE_UV" */
    uint32_t LightMask;               /* 68  ZYR_LIGHT_* bits lit for the snapshot */
    int32_t ProcessingMode;           /* 72  post-processing mode; 0 or more turns on ZYR_OPT_LOCATE */
    ZyrCameraParameters Camera;       /* 76..132 camera parameters for this image's light */
    uint8_t Colour;                   /* 133 1 = keep colour in the processed image */
    uint8_t Normalise;                /* 134 -> ZYR_OPT_NORMALISE */
    uint8_t Deskew;                   /* 135 -> ZYR_OPT_DESKEW unless the camera deskews */
    uint8_t CropWidth;                /* 136 -> ZYR_OPT_CROP_WIDTH */
    uint8_t CropHeight;               /* 137 -> ZYR_OPT_CROP_HEIGHT */
    uint8_t ExtraProcessing;          /* 138 -> ZYR_OPT_EXTRA */
    uint8_t Sharpen;                  /* 139 -> ZYR_OPT_SHARPEN */
    uint8_t Rotate90;                 /* 140 -> ZYR_OPT_ROTATE_90 */
    uint8_t Rotate180;                /* 141 -> ZYR_OPT_ROTATE_180 */
    uint8_t MirrorHorizontal;         /* 142 -> ZYR_OPT_MIRROR_H */
    uint8_t MirrorVertical;           /* 143 -> ZYR_OPT_MIRROR_V */
    uint8_t Greyscale;                /* 144 -> ZYR_OPT_GREYSCALE */
    uint8_t UseBorder;                /* 145 pass Camera.BorderPixels to post-processing */
} ZyrImageSettings;

/* Light bits (image-settings LightMask, snapshot light argument). */
#define ZYR_LIGHT_VISIBLE 0x1u
#define ZYR_LIGHT_IR 0x2u
#define ZYR_LIGHT_UV 0x4u

/* Option word bits of the post-processing calls. */
#define ZYR_OPT_LOCATE 0x1u      /* find the document on the platen */
#define ZYR_OPT_DESKEW 0x2u      /* straighten a document lying at an angle */
#define ZYR_OPT_NORMALISE 0x4u   /* stretch the grey levels to the full range */
#define ZYR_OPT_CROP_WIDTH 0x8u  /* cut the image to the document's width */
#define ZYR_OPT_CROP_HEIGHT 0x10u /* cut the image to the document's height */
#define ZYR_OPT_CROP (ZYR_OPT_CROP_WIDTH | ZYR_OPT_CROP_HEIGHT)
#define ZYR_OPT_EXTRA 0x20u      /* extra processing (denoise) */
#define ZYR_OPT_SHARPEN 0x80u
#define ZYR_OPT_ROTATE_90 0x100u
#define ZYR_OPT_ROTATE_180 0x200u
#define ZYR_OPT_MIRROR_H 0x400u
#define ZYR_OPT_MIRROR_V 0x800u
#define ZYR_OPT_GREYSCALE 0x1000u
#define ZYR_OPT_TWO_SIDED 0x4000u /* set by callers of the two-sided post-processing */

/* Where a document lies in a snapshot (20 bytes). Width or height 0 = not located. */
typedef struct ZyrLocation {
    int32_t Left;
    int32_t Top;
    int32_t Width;
    int32_t Height;
    int32_t AngleTenths; /* rotation in tenths of a degree, clockwise */
} ZyrLocation;

/* Image-processing service settings (sub-record of the reader settings). */
typedef struct ZyrImageProcessingSettings {
    int32_t ThreadCount;  /* worker threads for conversions; 0 = one */
    int32_t JpegQuality;  /* quality of JPEG output, 1..100 */
    uint8_t Reserved[24];
} ZyrImageProcessingSettings;

/* The five capture sub-records passed to the capture calls. */
typedef struct ZyrDetectSettings { /* A: document detection */
    int32_t PollIntervalMs;        /* how often the device is looked at while waiting */
    uint8_t Reserved[28];
} ZyrDetectSettings;

typedef struct ZyrLocateSettings { /* B: finding the document on the platen */
    int32_t MinimumArea;           /* smallest document in pixels; smaller objects are noise */
    uint8_t Reserved[28];
} ZyrLocateSettings;

typedef struct ZyrProcessSettings { /* C: post-processing */
    int32_t DenoiseRadius;          /* used by ZYR_OPT_EXTRA */
    uint8_t Reserved[28];
} ZyrProcessSettings;

typedef struct ZyrSideSettings {    /* D: second side of a two-sided reader */
    int32_t MirrorBackSide;         /* 1 = the back camera's image is mirrored */
    uint8_t Reserved[28];
} ZyrSideSettings;

typedef struct ZyrFeedSettings {    /* E: document feed and removal */
    int32_t RemovalTimeMs;          /* how long a taken document still counts as present */
    uint8_t Reserved[28];
} ZyrFeedSettings;

/* The reader settings: one process-wide instance filled by ZyrReader_LL_LoadSettings* and passed
 * by address to the initialisation, plug-in and capture calls. Keys of the settings file are
 * documented in the README. */
typedef struct ZyrReaderSettings {
    int32_t LoggingLevel;      /* logging is on when greater than 0; higher = more detail */
    uint32_t LoggingMask;      /* ZYR_LOG_* categories */
    uint64_t CameraDevice;     /* device value passed to camera and image-processing start */
    int32_t ImageWidth;        /* largest snapshot width */
    int32_t ImageHeight;       /* largest snapshot height (adjacent to ImageWidth) */
    ZyrImageProcessingSettings ImageProcessing;
    char PluginFolder[ZYR_PATH_SIZE];         /* folder searched for KVDECODE_*.so */
    char PluginSettingsFolder[ZYR_PATH_SIZE]; /* folder of the #KVDECODE_*.ini files */
    char ApplicationFolder[ZYR_PATH_SIZE];    /* where the application keeps its files */
    char DeviceFolder[ZYR_PATH_SIZE];         /* the virtual reader's folder; empty = none */
    ZyrCameraParameters VisibleParameters;
    ZyrCameraParameters InfraredParameters;
    ZyrCameraParameters UltravioletParameters;
    uint32_t CommonCaptureResolution; /* written into every image-settings record (record 124) */
    uint8_t CommonBinning;            /* written into every image-settings record (record 130) */
    uint8_t DarkObjectDetect;         /* 1 = dark-object detection: documents too dark for the visible
                                         threshold are found with DarkObjectValue, and detection sets
                                         its detection flag */
    float DarkObjectValue;            /* detection threshold used when DarkObjectDetect is on */
    uint8_t TwoSided;                 /* 1 = the reader images both sides */
    uint8_t ExtraProcessing;          /* 1 = always add ZYR_OPT_EXTRA */
    ZyrDetectSettings Detect;         /* sub-record A */
    ZyrLocateSettings Locate;         /* sub-record B */
    ZyrProcessSettings Process;       /* sub-record C */
    ZyrSideSettings Side;             /* sub-record D */
    ZyrFeedSettings Feed;             /* sub-record E */
} ZyrReaderSettings;

/* Logging categories. */
#define ZYR_LOG_SETTINGS 0x01u
#define ZYR_LOG_PLUGINS 0x02u
#define ZYR_LOG_DECODE 0x04u
#define ZYR_LOG_IMAGES 0x08u
#define ZYR_LOG_CAMERA 0x10u
#define ZYR_LOG_PARSE 0x20u
#define ZYR_LOG_ALL 0x3Fu

/* Pixel formats of ZyrImage. */
typedef enum ZyrPixelFormat {
    ZYR_PIXEL_GREY8 = 1,  /* one byte per pixel */
    ZYR_PIXEL_RGB24 = 3,  /* bytes R, G, B */
    ZYR_PIXEL_BGRA32 = 4  /* bytes B, G, R, A (a little-endian 0xAARRGGBB word) */
} ZyrPixelFormat;

/* An image: either a view of the caller's pixels (the library only reads it) or, when handed out
 * by the library, a library object released with ZyrReader_DestroyCachedObject. Rows are top-down. */
typedef struct ZyrImage {
    int32_t Width;
    int32_t Height;
    int32_t Stride;      /* bytes from one row to the next */
    int32_t PixelFormat; /* ZyrPixelFormat */
    uint8_t* Pixels;
} ZyrImage;

/* Symbologies reported in ZyrSymbolResult.Symbology. */
typedef enum ZyrSymbology {
    ZYR_SYM_UNKNOWN = 0,
    ZYR_SYM_PDF417 = 1,
    ZYR_SYM_QRCODE = 2,
    ZYR_SYM_MICRO_QRCODE = 3,
    ZYR_SYM_DATAMATRIX = 4,
    ZYR_SYM_AZTEC = 5,
    ZYR_SYM_MAXICODE = 6,
    ZYR_SYM_CODE128 = 7,
    ZYR_SYM_CODE39 = 8,
    ZYR_SYM_CODE93 = 9,
    ZYR_SYM_CODABAR = 10,
    ZYR_SYM_ITF = 11,
    ZYR_SYM_EAN13 = 12,
    ZYR_SYM_EAN8 = 13,
    ZYR_SYM_UPCA = 14,
    ZYR_SYM_UPCE = 15,
    ZYR_SYM_DATABAR = 16,
    ZYR_SYM_DATABAR_EXPANDED = 17
} ZyrSymbology;

/* Data types of ZyrSymbolResult.DataType. */
typedef enum ZyrDataType {
    ZYR_DATA_ASCII = 0,      /* 7-bit text */
    ZYR_DATA_TEXT8 = 1,      /* 8-bit text (ISO-8859-1) */
    ZYR_DATA_BINARY = 2,     /* bytes without a text meaning */
    ZYR_DATA_STRING = 5,     /* zero-terminated string; DataLength excludes the terminator */
    ZYR_DATA_ECI_BYTES = 12  /* bytes in the character set named by Eci */
} ZyrDataType;

/* ECI designators used in ZyrSymbolResult.Eci. */
#define ZYR_ECI_NONE 0
#define ZYR_ECI_ISO8859_1 3
#define ZYR_ECI_SHIFT_JIS 20
#define ZYR_ECI_UTF8 26

typedef struct ZyrPoint {
    int32_t X;
    int32_t Y;
} ZyrPoint;

/* One decoded symbol, handed to the decode callback; released with ZyrReader_DestroyCachedObject. */
typedef struct ZyrSymbolResult {
    int32_t Symbology;      /* ZyrSymbology */
    int32_t Orientation;    /* rotation of the symbol in whole degrees, 0..359, clockwise */
    int32_t DataType;       /* ZyrDataType */
    const uint8_t* Data;    /* DataLength bytes, always followed by one extra zero byte */
    int32_t DataLength;
    int32_t Eci;            /* ECI designator, ZYR_ECI_NONE when the symbol carries none */
    ZyrPoint Corners[4];    /* top-left, top-right, bottom-right, bottom-left in image pixels */
} ZyrSymbolResult;

/* ---- AAMVA parse result ---- */

typedef struct AAMVADate {
    uint32_t Day;   /* 0xFFFFFFFF in any component = no date */
    uint32_t Month;
    uint32_t Year;
} AAMVADate;

#define AAMVA_UNIT_INCHES 1u
#define AAMVA_UNIT_CENTIMETRES 2u
#define AAMVA_UNIT_POUNDS 3u
#define AAMVA_UNIT_KILOGRAMS 4u

typedef struct AAMVAMeasure {
    int32_t Value;
    uint32_t Unit; /* AAMVA_UNIT_*; any other value = absent */
} AAMVAMeasure;

typedef struct AAMVADataItem {
    char ID[4];       /* three-character element identifier, NUL-terminated */
    char Name[3000];  /* descriptive name of the element; "Jurisdiction-specific element" for Z..
                         IDs and "Unknown element" for IDs no standard version defines */
    char Value[3000]; /* the value as it stood in the data */
} AAMVADataItem;

#define AAMVA_NOT_PRESENT 0xFFFFFFFFu

typedef struct AAMVARecord {
    char LicenceNumber[3000];
    char FullName[3000];
    char Surname[3000];
    char Forename[3000];
    char MiddleName[3000];
    char NameSuffix[4];
    char GivenNames[3000];
    char Sex[8];          /* the sex as a word: "Male", "Female", "Unknown" or empty */
    char ShortSex;        /* 'M', 'F', 'X' or ' '; not NUL-terminated */
    AAMVADate DateOfBirth;
    AAMVADate IssueDate;
    AAMVADate ExpiryDate;
    char AddressStreet[3000];
    char AddressCity[3000];
    char AddressState[3000];
    char AddressPostalCode[3000];
    char AddressCountry[4];
    AAMVAMeasure Height;
    AAMVAMeasure Weight;
    int32_t HairColour;   /* AAMVA_HAIR_* code, -1 when absent */
    int32_t EyeColour;    /* AAMVA_EYE_* code, -1 when absent */
    char FileType[6];     /* "ANSI " or "AAMVA" */
    char IIN[7];
    char IssuerName[3000]; /* issuing jurisdiction of the IIN, e.g. "Virginia"; "Unknown" if not listed */
    uint32_t Version;             /* AAMVA standard version 0..; AAMVA_NOT_PRESENT when unknown */
    uint32_t JurisdictionVersion; /* AAMVA_NOT_PRESENT where the version has none */
    int32_t DataItemCount;
    AAMVADataItem* DataItems;     /* DataItemCount items in order of appearance, library-owned */
} AAMVARecord;

/* Hair colour codes (AAMVA element DAZ): the standard's three-letter codes, the older two-letter
 * codes and whole words map to these; other text maps to UNKNOWN. */
#define AAMVA_HAIR_BALD 0
#define AAMVA_HAIR_BLACK 1
#define AAMVA_HAIR_BLOND 2
#define AAMVA_HAIR_BROWN 3
#define AAMVA_HAIR_GREY 4
#define AAMVA_HAIR_RED 5
#define AAMVA_HAIR_SANDY 6
#define AAMVA_HAIR_WHITE 7
#define AAMVA_HAIR_UNKNOWN 8

/* Eye colour codes (AAMVA element DAY), mapped the same way. */
#define AAMVA_EYE_BLACK 0
#define AAMVA_EYE_BLUE 1
#define AAMVA_EYE_BROWN 2
#define AAMVA_EYE_GREY 3
#define AAMVA_EYE_GREEN 4
#define AAMVA_EYE_HAZEL 5
#define AAMVA_EYE_MAROON 6
#define AAMVA_EYE_PINK 7
#define AAMVA_EYE_DICHROMATIC 8
#define AAMVA_EYE_UNKNOWN 9

#pragma pack(pop)

/* ---------------------------------------------------------------------------------------------
 * Callbacks
 * ------------------------------------------------------------------------------------------- */

/* Receives errors a user must see (a missing reader at settings load, device failures during a
 * capture). May be called on any thread that is inside a library call. */
typedef void (*ZyrReaderErrorHandler)(int32_t code, const char* message);

/* Receives each decoded symbol during ZyrReader_ImagePluginDecode, on the calling thread, in the
 * order found. tag is the decode call's callbackTag; symbolIndex counts from 0; symbolCount is the
 * number of symbols the decode found. */
typedef void (*ZyrDecodeCallback)(void* context, int32_t tag, int32_t symbolIndex, int32_t symbolCount,
                                  const ZyrSymbolResult* symbol);

/* Receives each image a capture call produces (a library object). side: 0 whole, 1 or 2. */
typedef void (*ZyrImageCallback)(void* user, int32_t imageIndex, int32_t side, uint32_t lightMask,
                                 ZyrImage* image);

/* ---------------------------------------------------------------------------------------------
 * Session, settings and logging
 * ------------------------------------------------------------------------------------------- */

/* options: reserved, pass 0. A null handler stops error reports. */
ZYRREADER_API int32_t ZyrReader_SetErrorHandler(ZyrReaderErrorHandler handler, uint32_t options);

/* Loads the connected reader's stored settings. The reader is connected when the environment
 * variable ZYRREADER_DEVICE names a folder holding device.ini. Without one: defaults, error 9
 * through the error handler, and 9 returned. */
ZYRREADER_API int32_t ZyrReader_LL_LoadSettings(ZyrReaderSettings* settings);

/* Loads the settings from an INI file; missing keys (or a missing file) take their defaults and
 * relative folders are taken relative to the file's folder. Returns ZYR_ERR_FILE when the file
 * cannot be read (the record then holds the defaults). */
ZYRREADER_API int32_t ZyrReader_LL_LoadSettingsFromIniFile(ZyrReaderSettings* settings, const char* path);

/* Appends time-stamped lines to fileName for the categories in mask at or below level. */
ZYRREADER_API int32_t ZyrReader_InitialiseLogging(bool enable, int32_t level, uint32_t mask,
                                                  const char* fileName);

/* Frees every object still held, closes the plug-ins and ends the services. */
ZYRREADER_API int32_t ZyrReader_DestroyCachedData(void);

/* Frees one object the library handed out; ZYR_ERR_UNKNOWN_HANDLE for anything else. */
ZYRREADER_API int32_t ZyrReader_DestroyCachedObject(const void* object);

/* ---------------------------------------------------------------------------------------------
 * Services
 * ------------------------------------------------------------------------------------------- */

/* flags: reserved, pass 0. */
ZYRREADER_API int32_t ZyrReader_CameraInitialise(ZyrReaderSettings* settings, uint64_t device, uint32_t flags);
ZYRREADER_API bool ZyrReader_IsCameraInitialised(void);
ZYRREADER_API int32_t ZyrReader_CameraShutdown(void);

ZYRREADER_API int32_t ZyrReader_ImageProcessingInitialise(ZyrReaderSettings* settings, uint64_t device,
                                                          ZyrImageProcessingSettings* processing);
ZYRREADER_API bool ZyrReader_IsImageProcessingInitialised(void);
ZYRREADER_API int32_t ZyrReader_ImageProcessingShutdown(void);

/* The signal service drives the reader's beeper and lamps; the virtual reader has none. */
ZYRREADER_API int32_t ZyrReader_SignalInitialise(ZyrReaderSettings* settings);
ZYRREADER_API bool ZyrReader_IsSignalInitialised(void);
ZYRREADER_API int32_t ZyrReader_SignalShutdown(void);

ZYRREADER_API int32_t ZyrReader_ParseInitialise(void);
ZYRREADER_API bool ZyrReader_IsParsingInitialised(void);
ZYRREADER_API int32_t ZyrReader_ParseShutdown(void);

/* Parses an AAMVA DL/ID card data stream into a library-owned record, released with
 * ZyrReader_DestroyCachedObject. *record is set only on success.
 *   data, length  the bytes to parse (length 0, or only blanks, gives ZYR_ERR_AAMVA_EMPTY)
 *   reserved      pass 0
 * ZYR_ERR_NOT_INITIALISED before ZyrReader_ParseInitialise; ZYR_ERR_NOT_AAMVA, ZYR_ERR_AAMVA_TRUNCATED
 * and ZYR_ERR_AAMVA_EMPTY for bytes that cannot be parsed. */
ZYRREADER_API int32_t ZyrReader_ParseAAMVA(const uint8_t* data, int32_t length, AAMVARecord** record,
                                           int32_t reserved);

/* ---------------------------------------------------------------------------------------------
 * Image conversion
 * ------------------------------------------------------------------------------------------- */

#define ZYR_FORMAT_BMP 6 /* BMP file bytes (24-bit colour, or 8-bit grey with a palette) */

/* Converts encoded image bytes (PNG, JPEG or BMP) to the given format. With output null, only the
 * needed size is written to *outputSize (from the header alone). Otherwise *outputSize is the
 * capacity of output on entry and the number of bytes written on return. */
ZYRREADER_API int32_t ZyrReader_ImageConvertFormat(int32_t format, const uint8_t* input, uint32_t inputLength,
                                                   uint8_t* output, uint32_t* outputSize);

/* ---------------------------------------------------------------------------------------------
 * Decoder plug-ins
 * ------------------------------------------------------------------------------------------- */

/* Loads a KVDECODE_*.so plug-in, opens it with its settings file and fills *handle.
 * By default the plug-in runs in a plug-in host process of its own (zyrreader-pluginhost, beside
 * this library), so that a plug-in that crashes or hangs costs one call, not the caller's process.
 * The [Host] section of the settings file chooses: Isolated=0 loads it into the calling process;
 * TimeLimitSeconds (default 20) bounds each call into an isolated plug-in. A bad value there gives
 * ZYR_ERR_PLUGIN_OPEN; a host that dies or hangs while opening the plug-in gives
 * ZYR_ERR_PLUGIN_CRASHED or ZYR_ERR_PLUGIN_TIMEOUT. */
ZYRREADER_API int32_t ZyrReader_ImagePluginLoad(const char* pluginPath, const char* settingsPath, uint64_t* handle,
                                                uint64_t cameraDevice);

/* Writes the plug-in's required image names, joined by ",", NUL-terminated. reserved: pass "". */
ZYRREADER_API int32_t ZyrReader_ImagePluginGetRequiredImages(uint64_t handle, const char* reserved, char* buffer,
                                                             int32_t bufferSize);

/* Fills the index-th image-settings record; non-zero past the last. */
ZYRREADER_API int32_t ZyrReader_ImagePluginGetImageSettings(uint64_t handle, ZyrImageSettings* settings,
                                                            int32_t index);

/* Runs the plug-in on an image and hands each symbol to callback before returning.
 *   wait         pass true: the call returns when the plug-in has finished
 *   image        the image to decode; a view of the caller's pixels, only read
 *   imageName    which required image this is ("" = the plug-in's first)
 *   imageNumber  the caller's number for the image, written to the log
 *   options      reserved, pass ""
 *   context      handed back to callback
 *   callbackTag  handed back to callback as its tag
 *   reserved1/2  pass 0
 * An isolated plug-in whose process dies during the call gives ZYR_ERR_PLUGIN_CRASHED, one that runs
 * past its time limit ZYR_ERR_PLUGIN_TIMEOUT (its process is killed); neither delivers any symbol,
 * and the next call starts a fresh process. */
ZYRREADER_API int32_t ZyrReader_ImagePluginDecode(bool wait, uint64_t handle, const ZyrImage* image,
                                                  const char* imageName, int32_t imageNumber, const char* options,
                                                  ZyrDecodeCallback callback, void* context, int32_t callbackTag,
                                                  int32_t reserved1, int32_t reserved2);

/* ---------------------------------------------------------------------------------------------
 * Document capture
 * ------------------------------------------------------------------------------------------- */

/* Updates the running camera from the settings (dark-object detection). ZYR_ERR_NOT_INITIALISED
 * when the camera is not initialised. */
ZYRREADER_API int32_t ZyrReader_CameraUpdateSettings(ZyrReaderSettings* settings);

/* Makes a pending detection or location call return ZYR_ERR_CANCELLED; a cancel with no call
 * pending is kept until the next detection or location call takes it. */
ZYRREADER_API int32_t ZyrReader_CameraCancelQueue(void);

/* Looks whether the previous document is still on the reader.
 *   lightMask, timeoutMs          pass 0, 0 (visible light, look once)
 *   side1, side2                  filled with where the document lies
 *   documentPresent               set to 0 once the document has been taken away
 *   settings, detect, locate      reader settings and sub-records A, B
 *   bothSides, reserved1          pass true, 0
 *   process, side, feed           sub-records C, D, E
 *   reserved2, debugImages, hiRes pass 0, false, false
 *   detectionFlag                 set to 1 when the document was found by dark-object detection */
ZYRREADER_API int32_t ZyrReader_LocateDocumentTwoSidedEx(uint32_t lightMask, int32_t timeoutMs, ZyrLocation* side1,
                                                         ZyrLocation* side2, uint8_t* documentPresent,
                                                         ZyrReaderSettings* settings, ZyrDetectSettings* detect,
                                                         ZyrLocateSettings* locate, bool bothSides, int32_t reserved1,
                                                         ZyrProcessSettings* process, ZyrSideSettings* side,
                                                         ZyrFeedSettings* feed, int32_t reserved2, bool debugImages,
                                                         bool hiRes, uint8_t* detectionFlag);

/* Asks a two-sided reader to draw in the document lying in its slot. */
ZYRREADER_API int32_t ZyrReader_InsertDocument(void);

/* Waits for the next document; ZYR_ERR_CANCELLED when the queue is cancelled.
 *   wait, timeoutMs, lightMask     pass true, 0 (wait for ever), 0
 *   reserved1..reserved5           pass 0
 *   reserved6, debugName           pass 0, null
 *   bothSides, findDocument        pass true, true
 *   other arguments as for ZyrReader_LocateDocumentTwoSidedEx */
ZYRREADER_API int32_t ZyrReader_CameraDetectDocumentTwoSidedEx(
    bool wait, int32_t timeoutMs, uint32_t lightMask, ZyrLocation* side1, ZyrLocation* side2,
    ZyrReaderSettings* settings, ZyrDetectSettings* detect, ZyrLocateSettings* locate, int32_t reserved1,
    int32_t reserved2, int32_t reserved3, int32_t reserved4, int32_t reserved5, ZyrProcessSettings* process,
    ZyrSideSettings* side, ZyrFeedSettings* feed, int32_t reserved6, const char* debugName, bool bothSides,
    bool findDocument, uint8_t* detectionFlag);

/* Takes a snapshot under the lights of lightMask and hands it to callback(user, 0, 0, lightMask, image).
 *   frames      frames averaged (the capture passes 15)
 *   reserved    pass 0; debugName pass null */
ZYRREADER_API int32_t ZyrReader_CameraTakeSnapshot(bool wait, uint32_t lightMask, int32_t frames,
                                                   ZyrCameraParameters* camera, ZyrReaderSettings* settings,
                                                   ZyrImageCallback callback, void* user, int32_t reserved,
                                                   const char* debugName);

/* Finds the document in a snapshot and processes it by the option word; hands the processed image
 * to callback(user, 0, 0, lightMask, image). ZYR_ERR_NO_DOCUMENT when nothing is found. */
ZYRREADER_API int32_t ZyrReader_ImagePostProcessImage(bool wait, const ZyrImage* snapshot, uint32_t lightMask,
                                                      uint32_t outputDpi, bool colour, uint32_t options,
                                                      int32_t processingMode, uint32_t borderPixels, float outputScale,
                                                      ZyrReaderSettings* settings, ZyrLocateSettings* locate,
                                                      ZyrLocation* side1, ZyrImageCallback callback, void* user,
                                                      int32_t reserved, const char* debugName,
                                                      ZyrProcessSettings* process);

/* As ZyrReader_ImagePostProcessImage for both sides of a two-sided reader: side 1, then side 2,
 * each through callback(user, i, side, lightMask, image). */
ZYRREADER_API int32_t ZyrReader_ImagePostProcessImageTwoSided(
    bool wait, const ZyrImage* snapshot, uint32_t lightMask, uint32_t outputDpi, bool colour, uint32_t options,
    int32_t processingMode, uint32_t borderPixels, float outputScale, ZyrReaderSettings* settings,
    ZyrLocateSettings* locate, ZyrLocation* side1, ZyrLocation* side2, ZyrImageCallback callback, void* user,
    int32_t reserved, const char* debugName, ZyrProcessSettings* process, ZyrSideSettings* side);

/* Tells the reader the current document is done with (ends every capture cycle). */
ZYRREADER_API int32_t ZyrReader_DocumentProcessingComplete(void);

#ifdef __cplusplus
} /* extern "C" */

/* The layouts shared with clients are fixed; catch any drift at compile time. */
#include <cstddef>
static_assert(sizeof(ZyrCameraParameters) == 57, "camera parameter block is 57 bytes");
static_assert(sizeof(ZyrImageSettings) == 146, "image-settings record is 146 bytes");
static_assert(offsetof(ZyrImageSettings, LightMask) == 68, "");
static_assert(offsetof(ZyrImageSettings, ProcessingMode) == 72, "");
static_assert(offsetof(ZyrImageSettings, Camera) == 76, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, OutputScale) == 100, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, DetectThreshold) == 104, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, BorderPixels) == 108, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, OutputDpi) == 120, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, CaptureResolution) == 124, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, HardwareDeskew) == 129, "");
static_assert(offsetof(ZyrImageSettings, Camera) + offsetof(ZyrCameraParameters, Binning) == 130, "");
static_assert(offsetof(ZyrImageSettings, Colour) == 133, "");
static_assert(offsetof(ZyrImageSettings, UseBorder) == 145, "");
static_assert(sizeof(ZyrLocation) == 20, "location record is 20 bytes");
static_assert(sizeof(AAMVADate) == 12, "");
static_assert(sizeof(AAMVAMeasure) == 8, "");
static_assert(sizeof(AAMVADataItem) == 6004, "");
static_assert(offsetof(AAMVARecord, NameSuffix) == 15000, "");
static_assert(offsetof(AAMVARecord, GivenNames) == 15004, "");
static_assert(offsetof(AAMVARecord, Sex) == 18004, "");
static_assert(offsetof(AAMVARecord, ShortSex) == 18012, "");
static_assert(offsetof(AAMVARecord, DateOfBirth) == 18013, "");
static_assert(offsetof(AAMVARecord, IssueDate) == 18025, "");
static_assert(offsetof(AAMVARecord, ExpiryDate) == 18037, "");
static_assert(offsetof(AAMVARecord, AddressStreet) == 18049, "");
static_assert(offsetof(AAMVARecord, AddressCountry) == 30049, "");
static_assert(offsetof(AAMVARecord, Height) == 30053, "");
static_assert(offsetof(AAMVARecord, Weight) == 30061, "");
static_assert(offsetof(AAMVARecord, HairColour) == 30069, "");
static_assert(offsetof(AAMVARecord, EyeColour) == 30073, "");
static_assert(offsetof(AAMVARecord, FileType) == 30077, "");
static_assert(offsetof(AAMVARecord, IIN) == 30083, "");
static_assert(offsetof(AAMVARecord, IssuerName) == 30090, "");
static_assert(offsetof(AAMVARecord, Version) == 33090, "");
static_assert(offsetof(AAMVARecord, JurisdictionVersion) == 33094, "");
static_assert(offsetof(AAMVARecord, DataItemCount) == 33098, "");
static_assert(offsetof(AAMVARecord, DataItems) == 33102, "");
static_assert(sizeof(AAMVARecord) == 33110, "AAMVA record is 33110 bytes");
#endif

#endif /* ZYRREADER_LOW_LEVEL_API_H */
