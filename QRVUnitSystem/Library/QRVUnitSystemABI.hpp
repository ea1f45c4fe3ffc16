#pragma once
// The plain C interface of libQRVUnitSystem.so. The library is loaded at run
// time, so this is the only contract between it and its clients: functions
// looked up by name, plain numbers in and out, text written into a buffer the
// caller owns (nothing allocated on one side is freed on the other).
//
// Unit type codes (the library's own numbering):
//   14  US cup            (volume)
//   15  millilitre        (volume)
//   16  US fluid ounce    (volume)
//   17  gram              (mass)
#include <stddef.h>

#if defined(QRV_UNIT_SYSTEM_BUILDING)
#define QRV_UNIT_SYSTEM_EXPORT __attribute__((visibility("default")))
#else
#define QRV_UNIT_SYSTEM_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

// Raised whenever a function below changes meaning; a client refuses a library
// whose version it does not know.
#define QRV_UNIT_SYSTEM_ABI_VERSION 1

QRV_UNIT_SYSTEM_EXPORT int QRVUnitSystemABIVersion(void);

// 1 when the library knows the unit type, else 0.
QRV_UNIT_SYSTEM_EXPORT int QRVUnitIsKnownType(int unitType);

// Writes the number of decimal places the unit normally shows. Returns 1, or 0
// for an unknown unit (out untouched).
QRV_UNIT_SYSTEM_EXPORT int QRVUnitDefaultDecimalPlaces(int unitType, int* out);

// Writes the unit's name: abbreviated ("ml") or full ("milliliters"), singular
// or plural. Returns the name's length, or -1 for an unknown unit. The buffer
// gets at most capacity - 1 bytes and a terminating NUL (snprintf style).
QRV_UNIT_SYSTEM_EXPORT long QRVUnitName(int unitType, int abbreviated, int plural, char* buffer,
                                        size_t capacity);

// Converts a value between two units of the same dimension. Returns 1, or 0
// when either unit is unknown, the dimensions differ (volume vs mass) or the
// value is not finite (out untouched).
QRV_UNIT_SYSTEM_EXPORT int QRVUnitValueConvert(int fromUnitType, double value, int toUnitType, double* out);

// Writes "<number> <unit name>", the number rounded half away from zero to the
// given decimal places (0 to 20), '.' as separator, no grouping. Returns the
// text's length (snprintf style), or -1 for an unknown unit, a non-finite value
// or decimal places out of range.
QRV_UNIT_SYSTEM_EXPORT long QRVUnitValueFormat(int unitType, double value, int decimalPlaces, int abbreviated,
                                               char* buffer, size_t capacity);

// Writes the number alone, rounded half away from zero to the unit's default
// decimal places (a whole number for grams). Same returns as QRVUnitValueFormat.
QRV_UNIT_SYSTEM_EXPORT long QRVUnitValueFormatRounded(int unitType, double value, char* buffer,
                                                      size_t capacity);

// Pointer types for clients that look the functions up with dlsym.
typedef int (*QRVUnitSystemABIVersionFn)(void);
typedef int (*QRVUnitIsKnownTypeFn)(int);
typedef int (*QRVUnitDefaultDecimalPlacesFn)(int, int*);
typedef long (*QRVUnitNameFn)(int, int, int, char*, size_t);
typedef int (*QRVUnitValueConvertFn)(int, double, int, double*);
typedef long (*QRVUnitValueFormatFn)(int, double, int, int, char*, size_t);
typedef long (*QRVUnitValueFormatRoundedFn)(int, double, char*, size_t);

#ifdef __cplusplus
}
#endif
