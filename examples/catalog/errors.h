// examples/catalog/errors.h - the program's own error numbers. Their messages are string resources 25000 plus
// code.
#pragma once

#include "general/error/errornum.h"

inline constexpr NX_ErrorNum errorCommand = errorTypeUserInput | 1701;
inline constexpr NX_ErrorNum errorOption = errorTypeUserInput | 1702;
inline constexpr NX_ErrorNum errorOptionValue = errorTypeUserInput | 1703;
inline constexpr NX_ErrorNum errorOptionText = errorTypeUserInput | 1704;
inline constexpr NX_ErrorNum errorArguments = errorTypeUserInput | 1705;
inline constexpr NX_ErrorNum errorRegExp = errorTypeUserInput | 1706;
inline constexpr NX_ErrorNum errorNotDir = errorTypeUserInput | 1707;
inline constexpr NX_ErrorNum errorNameKept = errorTypeUserInput | 1708;
inline constexpr NX_ErrorNum errorPathLong = errorTypeUserInput | 1709;
inline constexpr NX_ErrorNum errorNotFile = errorTypeUserInput | 1710;
inline constexpr NX_ErrorNum errorResource = errorTypeUserInput | 1711;
