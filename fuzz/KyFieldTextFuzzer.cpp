// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyField.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

/// The first byte chooses a field type, the rest is text for it. A text that is accepted must read back as the same
/// value once it is written with full precision; a text that is refused must leave the field as it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const auto kind = static_cast<KyFieldKind>(data[0] % cNbBuiltInFieldTypes);
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);
    const KyFieldType& type = KyFieldManager::getFieldType(kind);
    KyField field = KyField::makeDefault(type.getKind());
    const KyField before = field;
    if (!field.fromString(text)) {
        if (!(field == before))
            std::abort();
        return 0;
    }
    KyField again = field;
    const std::string written = field.toString(17);
    const bool isNaN = written.find("nan") != std::string::npos;
    if (!isNaN && (!again.fromString(written) || !(again == field)))
        std::abort();
    field.toInt();
    field.toDouble();
    return 0;
}
