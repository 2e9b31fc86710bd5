// general/error/errornum.cpp - severities, and system codes as types.
#include "general/error/errornum.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <span>

#include "general/error/errorintern.h"
#include "general/error/errorman.h"

namespace {

std::atomic<std::int32_t> sysLast{0};

constexpr std::int16_t existsCodes[] = {80, 183, 1073, 1316, 1318, 1356, 1363, 1379, 1410, 1760, 1802};
constexpr std::int16_t retryCodes[] = {32, 33, 167, 173, 1108};
constexpr std::int16_t accessCodes[] = {5, 65, 994};
constexpr std::int16_t notFoundCodes[] = {2,    3,    18,   20,   27,   53,   67,   110,  113,
                                          126,  127,  161,  187,  203,  259,  317,  1157, 1200,
                                          1203, 1243, 1248, 1416, 1421, 1425, 1456, 1710, 1744,
                                          1759, 1761, 1812, 1813, 1814, 1815, 1898, 1908, 3002};
constexpr std::int16_t dataCodes[] = {11, 193};

struct SysCodes {
    NX_ErrorType type;
    std::span<std::int16_t const> codes;
};
constexpr SysCodes sysCodes[] = {{errorTypeExists, existsCodes},
                                 {errorTypeRetry, retryCodes},
                                 {errorTypeAccess, accessCodes},
                                 {errorTypeNotFound, notFoundCodes},
                                 {errorTypeData, dataCodes}};

} // namespace

std::int32_t nxErrorSysLast() {
    return sysLast.load(std::memory_order_relaxed);
}

void nxErrorSysLast(std::int32_t sys) {
    sysLast.store(sys, std::memory_order_relaxed);
}

NX_ErrorType NxErrorTypeOfSys(long sys) {
    auto const code = static_cast<std::int32_t>(sys);
    nxErrorSysLast(code);
    for (SysCodes const& row : sysCodes)
        if (std::find(row.codes.begin(), row.codes.end(), code) != row.codes.end())
            return row.type;
    return errorTypeSystem;
}

NX_ErrorSeverity NxErrorSeverity(int num) {
    static constexpr unsigned char severities[] = {0, 1, 1, 1, 2, 2, 2, 2, 2, 2, 3, 4, 4, 4, 4, 4, 5};
    unsigned int const index = (static_cast<unsigned int>(num) & 0xF800u) >> 11;
    return index < sizeof severities ? static_cast<NX_ErrorSeverity>(severities[index]) : errorSeverityFatal;
}

int NxErrorIsPerm(int num) {
    return NxErrorSeverity(num) >= errorSeverityPermanent;
}

int NX_Error::errorERROR(NX_ErrorNum errorNum) {
    num = errorNum;
    return NxErrorBufErrorNum(errorNum);
}
