// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQtStreamBuffers_p.h"

#include "KyException.h"
#include "KyResource.h"

#include <QFile>
#include <QFileInfo>

#include <map>
#include <memory>
#include <sstream>
#include <string>

namespace {

constexpr const char* cScheme = "qrc";

std::map<KyResource*, std::unique_ptr<std::stringbuf>>& buffers() {
    static std::map<KyResource*, std::unique_ptr<std::stringbuf>> open;
    return open;
}

std::streambuf* fail(const char* text) {
    KyException::create(text);
    return nullptr;
}

std::streambuf* createBuffer(KyResource& resource, int mode) {
    if (mode != KyResource::eRead)
        return fail("qtStreamBufferCreator(): Qt resource files support Read mode only.");
    if (buffers().contains(&resource))
        return fail("qtStreamBufferCreator(): KyResource already opened.");
    QFile file(":" + QString::fromStdString(resource.getURL().getDecodedPath()));
    // A compiled-in directory can be opened and reads as empty.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return fail("qtStreamBufferCreator(): Unable to open the file.");
    auto buffer = std::make_unique<std::stringbuf>(file.readAll().toStdString(), std::ios::in | std::ios::binary);
    return (buffers()[&resource] = std::move(buffer)).get();
}

void destroyBuffer(KyResource& resource) {
    if (buffers().erase(&resource) == 0)
        KyException::create("qtStreamBufferDestructor(): KyResource not opened.");
}

} // namespace

void KyQtStreamBuffers::addCreator() {
    KyResource::addBufferCreator(cScheme, &createBuffer, &destroyBuffer);
}

void KyQtStreamBuffers::removeCreator() {
    KyResource::removeBufferCreator(cScheme);
}

void KyQtStreamBuffers::closeAll() {
    while (!buffers().empty()) {
        KyResource* first = buffers().begin()->first;
        first->closeStreamBuffer();
        // A resource that was opened by other means than the layer does not come back here by closing.
        buffers().erase(first);
    }
}
