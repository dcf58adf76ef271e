/* Umbrella of the general toolbox: types, errors, memory, files. */
#ifndef KRZ_CARBON_CARBON_H
#define KRZ_CARBON_CARBON_H

#include <Carbon/Aliases.h>
#include <Carbon/Files.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacTypes.h>

#endif /* KRZ_CARBON_CARBON_H */
