// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyHidDetection.h"

#include "KyHidReportDescriptor_p.h"

#include <hidapi.h>
#include <locale.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <vector>

namespace {

constexpr const char* cClassFolder = "/sys/class/hidraw";
/// The kernel takes no longer one.
constexpr std::size_t cMaxDescriptorSize = 4096;

using UnitList = std::unique_ptr<hid_device_info, decltype(&hid_free_enumeration)>;

/// The bus speaks UTF-8 whatever the program's locale: in the C locale hidapi drops every text with an accent.
class Utf8Scope {
public:
    Utf8Scope()
        : mLocale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr))
        , mFormer(mLocale ? uselocale(mLocale) : nullptr) {}
    Utf8Scope(const Utf8Scope&) = delete;
    Utf8Scope& operator=(const Utf8Scope&) = delete;
    ~Utf8Scope() {
        if (!mLocale)
            return;
        uselocale(mFormer);
        freelocale(mLocale);
    }

private:
    locale_t mLocale;
    locale_t mFormer;
};

std::vector<std::uint8_t> readDescriptor(const std::filesystem::path& node) {
    const std::filesystem::path path = cClassFolder / node.filename() / "device/report_descriptor";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"), &std::fclose);
    std::vector<std::uint8_t> bytes(cMaxDescriptorSize);
    bytes.resize(file ? std::fread(bytes.data(), 1, bytes.size(), file.get()) : 0);
    return bytes;
}

/// One without a readable descriptor is a unit of no usage.
std::vector<KyHidUsage> readUsages(const std::filesystem::path& node) {
    std::vector<KyHidUsage> usages = KyHidReportDescriptor::getOutermostUsages(readDescriptor(node));
    if (usages.empty())
        usages.emplace_back();
    return usages;
}

void append(std::vector<KyHidRecord>& records, const hid_device_info& unit) {
    KyHidRecord record;
    record.manufacturer = KyHidDetection::narrow(unit.manufacturer_string);
    record.product = KyHidDetection::narrow(unit.product_string);
    record.vendorId = unit.vendor_id;
    record.productId = unit.product_id;
    record.path = unit.path;
    record.serial = KyHidDetection::narrow(unit.serial_number);
    for (const KyHidUsage& usage : readUsages(record.path)) {
        record.usagePage = usage.page;
        record.usage = usage.usage;
        records.push_back(record);
    }
}

} // namespace

std::vector<KyHidRecord> KyHidDetection::detectOnBus() {
    std::vector<KyHidRecord> records;
    std::error_code error;
    // Machines without any HID unit need no search through all devices.
    if (!std::filesystem::is_directory(cClassFolder, error) || hid_init() != 0)
        return records;
    const Utf8Scope scope;
    const UnitList units(hid_enumerate(0, 0), &hid_free_enumeration);
    for (const hid_device_info* unit = units.get(); unit; unit = unit->next) {
        // A path comes once for each of its collections, nested ones too: the descriptor tells which are outermost.
        if (unit->path && std::ranges::find(records, unit->path, &KyHidRecord::path) == records.end())
            append(records, *unit);
    }
    return records;
}
