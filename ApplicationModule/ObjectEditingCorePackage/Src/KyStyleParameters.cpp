// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyStyleParameters.h"

#include "KyStyleText_p.h"

#include "KyCallSignatures.h"
#include "KyCast.h"
#include "KyException.h"
#include "KyTypeBuilder.h"

#include <QWidget>

#include <algorithm>
#include <iterator>

KyStyleParameters* KyStyleParameters::msInstance = nullptr;
const KyType* KyStyleParameters::msType = nullptr;
bool KyStyleParameters::msIsClassInitialized = false;

KyStyleParameters::KyStyleParameters() = default;

KyStyleParameters::~KyStyleParameters() {
    // A script may end the default parameters.
    if (msInstance == this)
        msInstance = nullptr;
    notifyEnd();
}

KyStyleParameters& KyStyleParameters::get() {
    return *msInstance;
}

void KyStyleParameters::initializeClass() {
    if (msIsClassInitialized)
        return;
    msIsClassInitialized = true;
    initializeType();
    staticInitialize();
}

void KyStyleParameters::finalizeClass() {
    if (!msIsClassInitialized)
        return;
    msIsClassInitialized = false;
    staticFinalize();
    finalizeType();
}

void KyStyleParameters::staticInitialize() {
    if (!msInstance)
        msInstance = new KyStyleParameters;
}

void KyStyleParameters::staticFinalize() {
    if (msInstance)
        msInstance->destroy();
}

void KyStyleParameters::initializeType() {
    if (msType)
        return;
    KyObject::initializeType();
    msType = KyTypeBuilder<KyStyleParameters>("KyStyleParameters", KyObject::getType())
                 .factory()
                 .container("ParameterNames", &KyStyleParameters::getNbParameters, &KyStyleParameters::getParameterName)
                 .method("setParameter", &KyStyleParameters::setParameter)
                 .method("removeParameter", &KyStyleParameters::removeParameter)
                 .method("getParameter", &KyStyleParameters::getParameter)
                 .method("getNbParameters", &KyStyleParameters::getNbParameters)
                 .method("resolve", &KyStyleParameters::resolve)
                 .staticMethod("get", &KyStyleParameters::find)
                 .build();
    KyCallSignatures::add("KyStyleParameters", {"getParameter(name)", "setParameter(name, value)",
                                                "removeParameter(name)", "resolve(text)"});
}

void KyStyleParameters::finalizeType() {
    KyType::remove(msType);
}

const KyType* KyStyleParameters::getType() {
    if (!msType)
        initializeType();
    return msType;
}

KyStyleParameters* KyStyleParameters::cast(KyObject* object) {
    return kyCast<KyStyleParameters>(object);
}

KyObject* KyStyleParameters::factory() {
    return new KyStyleParameters;
}

const KyType* KyStyleParameters::getObjectType() const {
    return getType();
}

KyObject* KyStyleParameters::clone() const {
    auto copy = std::make_unique<KyStyleParameters>();
    copy->mParameters = mParameters;
    return copy.release();
}

bool KyStyleParameters::setParameter(const std::string& name, const KyField& value) {
    std::string text;
    if (!KyStyleText::isName(name) || !KyStyleText::format(value, text)) {
        KyException::create("KyStyleParameters::setParameter(): bad name or value of the parameter \"" + name + "\".");
        return false;
    }
    const auto [place, isNew] = mParameters.try_emplace(name, value);
    if (!isNew && place->second == value)
        return true;
    place->second = value;
    mReported.erase(name);
    changed(isNew ? eElementInserted : eAttributeChanged, name, isNew ? indexOf(name) : -1);
    return true;
}

bool KyStyleParameters::removeParameter(const std::string& name) {
    const auto place = mParameters.find(name);
    if (place == mParameters.end())
        return false;
    const std::string removed = place->first;
    const int index = indexOf(removed);
    mParameters.erase(place);
    changed(eElementRemoved, removed, index);
    return true;
}

KyField KyStyleParameters::getParameter(const std::string& name) const {
    const auto place = mParameters.find(name);
    return place == mParameters.end() ? KyField() : place->second;
}

const std::string& KyStyleParameters::getParameterName(unsigned index) const {
    static const std::string none;
    return index < mParameters.size() ? std::next(mParameters.begin(), static_cast<std::ptrdiff_t>(index))->first
                                      : none;
}

int KyStyleParameters::indexOf(const std::string& name) const {
    return static_cast<int>(std::distance(mParameters.begin(), mParameters.find(name)));
}

std::string KyStyleParameters::resolve(const std::string& text) const {
    return KyStyleText::replaceNames(text,
                                     [this](std::string_view name, std::string& value) { return lookUp(name, value); });
}

bool KyStyleParameters::lookUp(std::string_view name, std::string& text) const {
    const auto place = mParameters.find(name);
    if (place != mParameters.end())
        return KyStyleText::format(place->second, text);
    if (mReported.emplace(name).second)
        KyException::create("KyStyleParameters: unknown parameter \"" + std::string(name) + "\".");
    return false;
}

void KyStyleParameters::apply(QWidget& widget, const std::string& styleTemplate) {
    release(widget);
    std::erase_if(mStyled, [](const auto& styled) { return !styled->widget; });
    const auto styled = std::make_shared<Styled>(Styled{&widget, styleTemplate, {}});
    mStyled.push_back(styled);
    // The widget's own sheet may be another one, so an empty result is set as well.
    styled->styleSheet = resolve(styleTemplate);
    widget.setStyleSheet(QString::fromStdString(styled->styleSheet));
}

bool KyStyleParameters::release(QWidget& widget) {
    const auto place = findStyled(widget);
    if (place == mStyled.end())
        return false;
    mStyled.erase(place);
    return true;
}

const std::string& KyStyleParameters::getTemplate(const QWidget& widget) const {
    static const std::string none;
    const auto place = findStyled(widget);
    return place == mStyled.end() ? none : (*place)->styleTemplate;
}

unsigned KyStyleParameters::getNbWidgets() const {
    return static_cast<unsigned>(
        std::count_if(mStyled.begin(), mStyled.end(), [](const auto& styled) { return !styled->widget.isNull(); }));
}

KyStyleParameters::StyledList::const_iterator KyStyleParameters::findStyled(const QWidget& widget) const {
    return std::find_if(mStyled.begin(), mStyled.end(),
                        [&](const auto& styled) { return styled->widget.data() == &widget; });
}

void KyStyleParameters::update(Styled& styled) const {
    std::string styleSheet = resolve(styled.styleTemplate);
    if (!styled.widget || styleSheet == styled.styleSheet)
        return;
    styled.styleSheet = std::move(styleSheet);
    styled.widget->setStyleSheet(QString::fromStdString(styled.styleSheet));
}

void KyStyleParameters::changed(KyObjectModificationType kind, const std::string& name, int index) {
    // A new style runs code of widgets, which may end widgets, change this list, and end the parameters.
    const KyObjectReference self(this);
    const std::string changedName = name;
    std::erase_if(mStyled, [](const auto& styled) { return !styled->widget; });
    for (const auto& styled : StyledList(mStyled)) {
        if (std::find(mStyled.begin(), mStyled.end(), styled) != mStyled.end())
            update(*styled);
        if (!self.get())
            return;
    }
    notifyModified(kind, changedName, index);
}
