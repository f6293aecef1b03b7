/*
 * KVDecodePlugin: the interface between the reader library and a decoder plug-in.
 *
 * A decoder plug-in is a shared library (KVDECODE_<Name>.so) that exports the C functions declared
 * below, unmangled. The reader library loads it with ZyrReader_ImagePluginLoad, checks
 * KVDecode_InterfaceVersion against KVDECODE_INTERFACE_VERSION before it touches anything else,
 * then opens one instance with the plug-in's settings file. Every other call takes that instance.
 *
 * Threading: the library never calls into one instance from two threads at once; different
 * instances (and different plug-ins) may be called from different threads at the same time.
 *
 * Errors: a plug-in must not let a C++ exception or a longjmp cross these functions. Functions
 * returning int32_t return KVDECODE_OK (0) on success and one of the KVDECODE_ERR_* codes otherwise.
 */
#ifndef KVDECODE_PLUGIN_H
#define KVDECODE_PLUGIN_H

#include <stdint.h>

#include "ZyrReaderLowLevelAPI.h"

#if defined(KVDECODE_BUILDING_PLUGIN)
#define KVDECODE_EXPORT __attribute__((visibility("default")))
#else
#define KVDECODE_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Raised whenever a function, an argument or a record below changes meaning or layout. */
#define KVDECODE_INTERFACE_VERSION 1u

/* Result codes of the plug-in functions. */
#define KVDECODE_OK 0
#define KVDECODE_ERR_BAD_ARGUMENT 1     /* null instance or pointer, bad image geometry or format */
#define KVDECODE_ERR_NO_MORE 2          /* KVDecode_GetImageSettings: index past the last image */
#define KVDECODE_ERR_BUFFER_TOO_SMALL 3 /* the caller's buffer cannot hold the answer */
#define KVDECODE_ERR_UNKNOWN_IMAGE 4    /* KVDecode_Decode: an image name the plug-in did not ask for */
#define KVDECODE_ERR_DECODER 5          /* the underlying decoder failed (it threw, ran out of memory) */

/* One symbol found by KVDecode_Decode, valid only during the sink call that receives it. */
typedef struct KVDecodeSymbol {
    int32_t Symbology;   /* ZyrSymbology */
    int32_t DataType;    /* ZyrDataType: ASCII or 8-bit text, binary, or bytes with an ECI */
    const uint8_t* Data; /* DataLength bytes exactly as encoded in the symbol (NUL bytes included) */
    int32_t DataLength;
    int32_t Eci;         /* ECI designator the symbol carries, ZYR_ECI_NONE when none */
    ZyrPoint Corners[4]; /* top-left, top-right, bottom-right, bottom-left, in image pixels, as read:
                            for a rotated symbol the "top-left" is the symbol's own */
} KVDecodeSymbol;

/* Receives each symbol in the order found. Return 0 to go on, anything else to stop the decode. */
typedef int32_t (*KVDecodeSink)(void* sinkContext, const KVDecodeSymbol* symbol);

/* The interface version the plug-in was built for: KVDECODE_INTERFACE_VERSION of its build. */
KVDECODE_EXPORT uint32_t KVDecode_InterfaceVersion(void);

/* Opens an instance configured from the plug-in's settings file (an INI file; a missing or
 * unreadable file, or one whose values make no sense, makes the open fail). cameraDevice is the
 * reader's device value, for plug-ins that talk to the camera; the decoders here ignore it.
 * Returns null on failure; when error is not null, a short reason (NUL-terminated, cut to errorSize). */
KVDECODE_EXPORT void* KVDecode_Open(const char* settingsPath, uint64_t cameraDevice, char* error,
                                    int32_t errorSize);

/* Writes the names of the images the instance needs, joined by "," with no spaces, NUL-terminated.
 * KVDECODE_ERR_BUFFER_TOO_SMALL (and an empty buffer when bufferSize > 0) when they do not fit. */
KVDECODE_EXPORT int32_t KVDecode_GetRequiredImages(void* instance, char* buffer, int32_t bufferSize);

/* Fills the capture settings of the index-th required image (0-based, in the order of
 * KVDecode_GetRequiredImages). KVDECODE_ERR_NO_MORE past the last. */
KVDECODE_EXPORT int32_t KVDecode_GetImageSettings(void* instance, int32_t index, ZyrImageSettings* settings);

/* Decodes one image and hands each symbol to sink before returning. image is a view of the
 * caller's pixels, only read. imageName names which required image this is ("" or null = the
 * first). Finding no symbol is success. */
KVDECODE_EXPORT int32_t KVDecode_Decode(void* instance, const ZyrImage* image, const char* imageName,
                                        KVDecodeSink sink, void* sinkContext);

/* Ends an instance; null is ignored. */
KVDECODE_EXPORT void KVDecode_Close(void* instance);

/* Function types of the exports, for hosts that look them up by name. */
typedef uint32_t (*KVDecode_InterfaceVersionFn)(void);
typedef void* (*KVDecode_OpenFn)(const char*, uint64_t, char*, int32_t);
typedef int32_t (*KVDecode_GetRequiredImagesFn)(void*, char*, int32_t);
typedef int32_t (*KVDecode_GetImageSettingsFn)(void*, int32_t, ZyrImageSettings*);
typedef int32_t (*KVDecode_DecodeFn)(void*, const ZyrImage*, const char*, KVDecodeSink, void*);
typedef void (*KVDecode_CloseFn)(void*);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* KVDECODE_PLUGIN_H */
