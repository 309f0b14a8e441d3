// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyFieldToQVariantConverter.h"
#include "QVariantToKyFieldConverter.h"

#include <QMetaType>

#include <bitset>
#include <map>
#include <memory>

class KyType;

/// The converters that extend `toQVariant` and `toKyField`: by class of the object model toward Qt, by meta-type from
/// Qt. It starts with converters for QVariantList and QStringList. The converters are not owned: unregister one before
/// it ends. Change it only while no conversion runs on another thread.
///
/// ```
/// KyFieldToQVariantConvertersRepository* repository = KyFieldToQVariantConvertersRepository::get();
/// repository->registerConverter(KyCamera::getType(), &cameraConverter);
/// repository->getConverter(KyStereoCamera::getType(), true); // &cameraConverter, by inheritance
/// repository->unregisterKyFieldConverter(&cameraConverter);
/// ```
class KYAPPLICATION_EXPORT KyFieldToQVariantConvertersRepository {
public:
    /// Makes the repository; nothing happens when there is one.
    static void initializeSingleton();
    static void finalizeSingleton();
    /// Null before initializeSingleton and after finalizeSingleton.
    static KyFieldToQVariantConvertersRepository* get() { return msInstance.get(); }

    KyFieldToQVariantConvertersRepository(const KyFieldToQVariantConvertersRepository&) = delete;
    KyFieldToQVariantConvertersRepository& operator=(const KyFieldToQVariantConvertersRepository&) = delete;
    ~KyFieldToQVariantConvertersRepository();

    /// Enters or replaces the converter of a meta-type and returns it; null is ignored.
    QVariantToKyFieldConverter* registerConverter(const QMetaType::Type& type, QVariantToKyFieldConverter* converter);
    /// Enters or replaces the converter of a class and returns it; a null class or converter is ignored.
    KyFieldToQVariantConverter* registerConverter(const KyType* type, KyFieldToQVariantConverter* converter);

    /// Exactly that meta-type's; null when there is none.
    QVariantToKyFieldConverter* getConverter(const QMetaType::Type& type) const {
        return isQtType(type) && !mQtTypes.test(type) ? nullptr : findConverter(type);
    }
    /// That class's, else the nearest parent's when `searchParents`; null when there is none or no class.
    KyFieldToQVariantConverter* getConverter(const KyType* type, bool searchParents) const;

    /// Removes every entry that holds the converter.
    void unregisterQVariantConverter(QVariantToKyFieldConverter* converter);
    /// Forgets the converter; nothing happens when it is not registered.
    void unregisterKyFieldConverter(KyFieldToQVariantConverter* converter);

private:
    KyFieldToQVariantConvertersRepository();
    static bool isQtType(QMetaType::Type type) { return type >= 0 && type < QMetaType::User; }
    void markQtType(QMetaType::Type type);
    QVariantToKyFieldConverter* findConverter(QMetaType::Type type) const;

    std::map<const KyType*, KyFieldToQVariantConverter*> mFieldConverters;
    std::map<QMetaType::Type, QVariantToKyFieldConverter*> mVariantConverters;
    /// Those of Qt's own types that have a converter: each conversion of a variant asks, and most have none.
    std::bitset<QMetaType::User> mQtTypes;

    static std::unique_ptr<KyFieldToQVariantConvertersRepository> msInstance;
};
