/* Alias records: descriptions of a file that find it again. */
#ifndef KRZ_CARBON_ALIASES_H
#define KRZ_CARBON_ALIASES_H

#include <Carbon/Files.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A handle to an alias record as files hold it, big-endian. */
typedef Handle AliasHandle;

/* Finds the file of an alias. `fromFile`: a file in whose folder it is looked for too; may be null.
   `wasChanged`: always 0, no record is updated; may be null.
   Fails: paramErr for a record that describes no file, fnfErr for a file that is not there, whose
   folder is (`target` is filled in all the same), dirNFErr when the folder is not. */
OSErr ResolveAlias(const FSSpec* fromFile, AliasHandle alias, FSSpec* target, Boolean* wasChanged);

#ifdef __cplusplus
}
#endif

#endif /* KRZ_CARBON_ALIASES_H */
