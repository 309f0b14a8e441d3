// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySceneExport.h"

#include "KyObject.h"

/// Base of objects of the graphics device: textures, frame buffers, shaders. They count references in their own way:
/// giving one back and ending the object are two steps, so that many can be given back before anything is deleted.
/// The count starts at 0. What they own on the device is deleted when a fitting context is current: at once, or at the
/// next frame or KyGraphicsDeviceManager::makeCurrent.
///
/// ```
/// KyHolder<KyTexture> texture(KyTexture::create());  // counts for you
/// ```
class KYSCENE_EXPORT KyGraphicsObject : public KyObject {
public:
    static const KyType* getType();
    static KyGraphicsObject* cast(KyObject* object);
    static void initializeType();
    static void finalizeType();
    const KyType* getObjectType() const override;

    /// @{
    /// References held; with the last one the object ends.
    unsigned getNbReferences() const { return mNbReferences; }
    void incrementReference() { ++mNbReferences; }
    /// @}
    /// Never ends the object; at 0 nothing happens.
    void decrementReference();
    /// Ends the object when nobody holds a reference.
    void deleteIfUnused();

protected:
    KyGraphicsObject() = default;
    /// The copy is referenced by nobody.
    KyGraphicsObject(const KyGraphicsObject& other)
        : KyObject(other) {}
    /// GL's names stay with each object.
    KyGraphicsObject& operator=(const KyGraphicsObject&) { return *this; }

private:
    unsigned mNbReferences = 0;

    static const KyType* msType;
};
