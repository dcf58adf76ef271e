/* Umbrella of drawing. */
#ifndef KRZ_APPLICATIONSERVICES_APPLICATIONSERVICES_H
#define KRZ_APPLICATIONSERVICES_APPLICATIONSERVICES_H

#include <ApplicationServices/CoreGraphics.h>
#include <ApplicationServices/QuickDraw.h>

#endif /* KRZ_APPLICATIONSERVICES_APPLICATIONSERVICES_H */
