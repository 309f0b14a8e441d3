// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStandIn.h"

#define _SETUPAPI_
#include <setupapi.h>

#include <cstddef>
#include <cstdio>
#include <cstring>

namespace {

int gNbSets = 0;

BOOL fail(DWORD error) {
    SetLastError(error);
    return FALSE;
}

} // namespace

extern "C" {

__declspec(dllexport) HDEVINFO WINAPI SetupDiGetClassDevsA(const GUID* id, PCSTR, HWND, DWORD flags) {
    if (KyStandIn::getUnits() == "fail" || flags != (DIGCF_PRESENT | DIGCF_DEVICEINTERFACE) ||
        *id != KyStandIn::cHidClass)
        return INVALID_HANDLE_VALUE;
    ++gNbSets;
    return new std::vector<std::string>(KyStandIn::split(KyStandIn::getUnits()));
}

__declspec(dllexport) BOOL WINAPI SetupDiEnumDeviceInterfaces(HDEVINFO set, PSP_DEVINFO_DATA, const GUID* id,
                                                              DWORD index, PSP_DEVICE_INTERFACE_DATA data) {
    if (data->cbSize != sizeof(*data) || *id != KyStandIn::cHidClass)
        return fail(ERROR_INVALID_USER_BUFFER);
    if (index >= static_cast<std::vector<std::string>*>(set)->size())
        return fail(ERROR_NO_MORE_ITEMS);
    data->Reserved = index;
    return TRUE;
}

__declspec(dllexport) BOOL WINAPI
    SetupDiGetDeviceInterfaceDetailA(HDEVINFO set, PSP_DEVICE_INTERFACE_DATA data,
                                     PSP_DEVICE_INTERFACE_DETAIL_DATA_A detail, DWORD size, PDWORD, PSP_DEVINFO_DATA) {
    const std::string& path = (*static_cast<std::vector<std::string>*>(set))[data->Reserved];
    if (detail->cbSize != sizeof(*detail))
        return fail(ERROR_INVALID_USER_BUFFER);
    if (path == "?")
        return fail(ERROR_GEN_FAILURE);
    if (offsetof(SP_DEVICE_INTERFACE_DETAIL_DATA_A, DevicePath) + path.size() + 1 > size)
        return fail(ERROR_INSUFFICIENT_BUFFER);
    std::memcpy(detail->DevicePath, path.c_str(), path.size() + 1);
    return TRUE;
}

__declspec(dllexport) BOOL WINAPI SetupDiDestroyDeviceInfoList(HDEVINFO set) {
    --gNbSets;
    delete static_cast<std::vector<std::string>*>(set);
    return TRUE;
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_DETACH && gNbSets != 0)
        std::fprintf(stderr, "lists not destroyed: %d\n", gNbSets);
    return TRUE;
}
}
