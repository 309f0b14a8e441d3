// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyDeviceObject.h"

#include "KyDevice.h"

#include "KyCallSignatures.h"
#include "KyTypeBuilder.h"

#include <string>

const KyType* KyDeviceObject::msType = nullptr;

namespace {

/// The object of a channel, made at its first reading, and anew where another channel has taken the place.
template <class Object>
Object* wrap(std::vector<KyHolder<Object>>& objects, unsigned index, typename Object::Channel& channel) {
    if (index >= objects.size())
        objects.resize(index + 1);
    KyHolder<Object>& object = objects[index];
    if (!object || object->editOwn() != &channel)
        object.reset(new Object(channel));
    return object.get();
}

template <class Object>
Object* findByName(KyDeviceObject& device, std::string_view name, unsigned (KyDeviceObject::*getNumber)() const,
                   Object* (KyDeviceObject::*get)(unsigned)) {
    const unsigned number = (device.*getNumber)();
    for (unsigned i = 0; i < number; ++i)
        if (Object* object = (device.*get)(i); object->getName() == name)
            return object;
    return nullptr;
}

} // namespace

const std::string& KyDeviceObject::getName() const {
    const KyDevice* device = editDevice();
    return device ? device->getName() : KyObject::getName();
}

bool KyDeviceObject::isEnabled() const {
    const KyDevice* device = editDevice();
    return device && device->isEnabled();
}

void KyDeviceObject::setEnabled(bool enabled) {
    if (KyDevice* device = editDevice())
        device->setEnabled(enabled);
}

unsigned KyDeviceObject::getNbAxes() const {
    const KyDevice* device = editDevice();
    return device ? device->getNbAxis() : 0;
}

unsigned KyDeviceObject::getNbButtons() const {
    const KyDevice* device = editDevice();
    return device ? device->getNbButtons() : 0;
}

unsigned KyDeviceObject::getNbOrientations() const {
    const KyDevice* device = editDevice();
    return device ? device->getNbOrientations() : 0;
}

KyAxisObject* KyDeviceObject::getAxis(unsigned index) {
    return index < getNbAxes() ? wrap(mAxes, index, mDevice->editAxis(index)) : nullptr;
}

KyButtonObject* KyDeviceObject::getButton(unsigned index) {
    return index < getNbButtons() ? wrap(mButtons, index, mDevice->editButton(index)) : nullptr;
}

KyOrientationObject* KyDeviceObject::getOrientation(unsigned index) {
    return index < getNbOrientations() ? wrap(mOrientations, index, mDevice->editOrientation(index)) : nullptr;
}

KyAxisObject* KyDeviceObject::findAxis(std::string_view name) {
    return findByName(*this, name, &KyDeviceObject::getNbAxes, &KyDeviceObject::getAxis);
}

KyButtonObject* KyDeviceObject::findButton(std::string_view name) {
    return findByName(*this, name, &KyDeviceObject::getNbButtons, &KyDeviceObject::getButton);
}

KyOrientationObject* KyDeviceObject::findOrientation(std::string_view name) {
    return findByName(*this, name, &KyDeviceObject::getNbOrientations, &KyDeviceObject::getOrientation);
}

void KyDeviceObject::forgetDevice() {
    mDevice = nullptr;
    notifyModified("Valid");
}

void KyDeviceObject::initializeType() {
    if (msType)
        return;
    using D = KyDeviceObject;
    KyAxisObject::initializeType();
    KyButtonObject::initializeType();
    KyOrientationObject::initializeType();
    msType = KyTypeBuilder<D>("KyDeviceObject", KyObject::getType())
                 .attribute("Name", &D::getName)
                 .attribute("Enabled", &D::isEnabled, &D::setEnabled)
                 .attribute("Valid", &D::isValid)
                 .container("Axes", &D::getNbAxes, &D::getAxis)
                 .container("Buttons", &D::getNbButtons, &D::getButton)
                 .container("Orientations", &D::getNbOrientations, &D::getOrientation)
                 .method("findAxis", [](D& d, const std::string& name) { return d.findAxis(name); })
                 .method("findButton", [](D& d, const std::string& name) { return d.findButton(name); })
                 .method("findOrientation", [](D& d, const std::string& name) { return d.findOrientation(name); })
                 .build();
    KyCallSignatures::add("KyDeviceObject", {"findAxis(name)", "findButton(name)", "findOrientation(name)"});
}

void KyDeviceObject::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyDeviceObject::getType() {
    if (!msType)
        initializeType();
    return msType;
}

const KyType* KyDeviceObject::getObjectType() const {
    return getType();
}

KyDeviceObject* KyDeviceObject::cast(KyObject* object) {
    return kyCast<KyDeviceObject>(object);
}
