// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "Ky2DSvgImporter.h"

#include "Ky2DGroup.h"
#include "KySvgBuilder_p.h"
#include "KySvgDocument_p.h"
#include "KySvgReports_p.h"

#include "KyCallSignatures.h"
#include "KyResource.h"
#include "KyTypeBuilder.h"
#include "KyURL.h"

#include <fmt/format.h>

const KyType* Ky2DSvgImporter::msType = nullptr;

void Ky2DSvgImporter::initializeType() {
    if (msType)
        return;
    using T = Ky2DSvgImporter;
    msType = KyTypeBuilder<T>("Ky2DSvgImporter", KyObject::getType())
                 .factory()
                 .attribute("Error", &T::getError)
                 .attribute("Width", &T::getWidth)
                 .attribute("Height", &T::getHeight)
                 .container("Report", &T::getNbReports, &T::getReport)
                 .method("importFile", &T::importFile)
                 .method("importText", &T::importText)
                 .attribute("MaxNodes", &T::getMaxNodes, &T::setMaxNodes)
                 .attribute("MaxExpansion", &T::getMaxExpansion, &T::setMaxExpansion)
                 .method("getError", &T::getError)
                 .method("getNbReports", &T::getNbReports)
                 .method("getReport", &T::getReport)
                 .method("getWidth", &T::getWidth)
                 .method("getHeight", &T::getHeight)
                 .build();
    KyCallSignatures::add("Ky2DSvgImporter", {"getReport(index)", "importFile(path)", "importText(svg)"});
}

void Ky2DSvgImporter::finalizeType() {
    KyType::remove(msType);
}

const KyType* Ky2DSvgImporter::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* Ky2DSvgImporter::getObjectType() const {
    return getType();
}

Ky2DSvgImporter* Ky2DSvgImporter::cast(KyObject* object) {
    return kyCast<Ky2DSvgImporter>(object);
}

KyObject* Ky2DSvgImporter::factory() {
    return create();
}

const std::string& Ky2DSvgImporter::getReport(unsigned index) const {
    static const std::string cNone;
    return index < mReports.size() ? mReports[index] : cNone;
}

Ky2DGroup* Ky2DSvgImporter::importFile(const std::string& path) {
    reset();
    const KyURL url = KyResource::resolve(KyURL(path, KyURL::eLocalPath));
    std::string bytes;
    if (KyResource::readBytes(url, bytes))
        return import(bytes, url);
    mError = fmt::format("The file \"{}\" cannot be read.", path);
    return nullptr;
}

Ky2DGroup* Ky2DSvgImporter::importText(const std::string& svg) {
    reset();
    return import(svg, KyURL());
}

void Ky2DSvgImporter::reset() {
    mError.clear();
    mReports.clear();
    mWidth = 0.0;
    mHeight = 0.0;
}

Ky2DGroup* Ky2DSvgImporter::import(const std::string& bytes, const KyURL& base) {
    KySvgReports reports(mReports);
    KySvgDocument document;
    if (!document.read(bytes, reports, mError))
        return nullptr;
    KySvgBuilder builder(document, base, reports, {mMaxNodes, mMaxExpansion});
    Ky2DGroup* group = builder.build();
    mWidth = builder.getSize().width;
    mHeight = builder.getSize().height;
    return group;
}
