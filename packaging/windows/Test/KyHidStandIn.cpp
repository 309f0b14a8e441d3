// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStandIn.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cwchar>

namespace {

int gNbData = 0;

struct Unit {
    unsigned vendor = 0, product = 0, page = 0, usage = 0;
    std::vector<std::string> fields = std::vector<std::string>(6);
};

// By the name of what the handle opened: it may not give the right to read.
Unit readUnit(HANDLE handle) {
    Unit unit;
    std::array<char, 1024> buffer{};
    if (GetFinalPathNameByHandleA(handle, buffer.data(), buffer.size(), 0) == 0)
        return unit;
    std::FILE* file = std::fopen(buffer.data(), "rb");
    if (!file)
        return unit;
    const std::size_t size = std::fread(buffer.data(), 1, buffer.size(), file);
    std::fclose(file);
    unit.fields = KyStandIn::split(std::string(buffer.data(), size));
    unit.fields.resize(6);
    std::sscanf(unit.fields[0].c_str(), "%x:%x", &unit.vendor, &unit.product);
    std::sscanf(unit.fields[1].c_str(), "%x/%x", &unit.page, &unit.usage);
    return unit;
}

// As the real one: what does not fit is cut off, its end too.
BOOLEAN giveText(HANDLE handle, std::size_t field, void* buffer, ULONG size) {
    const std::string text = readUnit(handle).fields[field];
    if (text.empty())
        return FALSE;
    auto* characters = static_cast<wchar_t*>(buffer);
    const std::size_t count = std::min(text.size() + 1, std::size_t{size} / sizeof(wchar_t));
    for (std::size_t i = 0; i < count; ++i)
        characters[i] = static_cast<unsigned char>(text.c_str()[i]);
    return TRUE;
}

} // namespace

extern "C" {

__declspec(dllexport) void WINAPI HidD_GetHidGuid(LPGUID id) {
    *id = KyStandIn::cHidClass;
}

__declspec(dllexport) BOOLEAN WINAPI HidD_GetAttributes(HANDLE handle, PHIDD_ATTRIBUTES attributes) {
    const Unit unit = readUnit(handle);
    if (unit.fields[2] == "attributes" || attributes->Size != sizeof(*attributes))
        return FALSE;
    attributes->VendorID = static_cast<USHORT>(unit.vendor);
    attributes->ProductID = static_cast<USHORT>(unit.product);
    return TRUE;
}

__declspec(dllexport) BOOLEAN WINAPI HidD_GetPreparsedData(HANDLE handle, PHIDP_PREPARSED_DATA* data) {
    Unit unit = readUnit(handle);
    *data = nullptr;
    if (unit.fields[2] == "data")
        return FALSE;
    if (unit.fields[2] == "nothing")
        return TRUE;
    ++gNbData;
    *data = reinterpret_cast<PHIDP_PREPARSED_DATA>(new Unit(std::move(unit)));
    return TRUE;
}

__declspec(dllexport) BOOLEAN WINAPI HidD_FreePreparsedData(PHIDP_PREPARSED_DATA data) {
    --gNbData;
    delete reinterpret_cast<Unit*>(data);
    return TRUE;
}

__declspec(dllexport) NTSTATUS WINAPI HidP_GetCaps(PHIDP_PREPARSED_DATA data, PHIDP_CAPS caps) {
    const Unit& unit = *reinterpret_cast<Unit*>(data);
    caps->UsagePage = static_cast<USAGE>(unit.page);
    caps->Usage = static_cast<USAGE>(unit.usage);
    return unit.fields[2] == "caps" ? HIDP_STATUS_INVALID_PREPARSED_DATA : HIDP_STATUS_SUCCESS;
}

__declspec(dllexport) BOOLEAN WINAPI HidD_GetManufacturerString(HANDLE handle, PVOID buffer, ULONG size) {
    return giveText(handle, 3, buffer, size);
}

__declspec(dllexport) BOOLEAN WINAPI HidD_GetProductString(HANDLE handle, PVOID buffer, ULONG size) {
    return giveText(handle, 4, buffer, size);
}

__declspec(dllexport) BOOLEAN WINAPI HidD_GetSerialNumberString(HANDLE handle, PVOID buffer, ULONG size) {
    return giveText(handle, 5, buffer, size);
}

BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_DETACH && gNbData != 0)
        std::fprintf(stderr, "data not freed: %d\n", gNbData);
    return TRUE;
}
}
