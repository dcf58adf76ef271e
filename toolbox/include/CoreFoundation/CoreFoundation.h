/* Strings, URLs and bundles of the foundation: what it takes to load a framework at run time.

   All are tokens below 2^32. A "Create" call hands over one reference, which CFRelease gives back;
   nil and stale references are answered with nil, false or nothing. */
#ifndef KRZ_COREFOUNDATION_COREFOUNDATION_H
#define KRZ_COREFOUNDATION_COREFOUNDATION_H

#include <Carbon/Files.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const void* CFTypeRef;
typedef const struct CFAllocatorType* CFAllocatorRef; /* nil: the default one, the only one */
typedef const struct CFStringType* CFStringRef;
typedef const struct CFURLType* CFURLRef;
typedef const struct CFBundleType* CFBundleRef;
typedef UInt32 CFStringEncoding;

enum { kCFStringEncodingASCII = 0x600, kCFStringEncodingUTF8 = 0x08000100 };

/* Gives one reference back; nil and stale ones are ignored. A bundle's code stays loaded. */
void CFRelease(CFTypeRef object);

/* A string of zero-terminated text. Fails: nil for no text, another encoding, and without memory.
 */
CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                      CFStringEncoding encoding);

/* The URL of a file record. Fails: nil for a record that stands for no path. */
CFURLRef CFURLCreateFromFSRef(CFAllocatorRef allocator, const FSRef* ref);

/* A URL one name further down. */
CFURLRef CFURLCreateCopyAppendingPathComponent(CFAllocatorRef allocator, CFURLRef url,
                                               CFStringRef component, Boolean isDirectory);

/* The bundle in a folder. Fails: nil when there is no such folder. */
CFBundleRef CFBundleCreate(CFAllocatorRef allocator, CFURLRef url);

/* Loads a bundle's code: the file that is named as the folder is without its extension. Also true
   when it is loaded already. Fails: false when it is missing or needs a library that is. */
Boolean CFBundleLoadExecutable(CFBundleRef bundle);

/* A function of a loaded bundle; nil when it has none of that name. */
void* CFBundleGetFunctionPointerForName(CFBundleRef bundle, CFStringRef name);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_COREFOUNDATION_COREFOUNDATION_H */
