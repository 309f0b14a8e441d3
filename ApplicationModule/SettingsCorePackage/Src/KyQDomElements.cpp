// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyQDomDocument.h"

#include <algorithm>

namespace {

bool isNameStart(QChar c) {
    return c.isLetter() || c == QLatin1Char('_');
}

bool isNamePart(QChar c) {
    return isNameStart(c) || c.isDigit() || c == QLatin1Char('-') || c == QLatin1Char('.') ||
           c.category() == QChar::Mark_NonSpacing;
}

bool isPlainName(const QString& text) {
    return !text.isEmpty() && isNameStart(text.front()) && std::ranges::all_of(text, &isNamePart);
}

/// 1 for a document element, 0 for none.
int getDepth(QDomElement element) {
    int depth = 0;
    for (; !element.isNull(); element = element.parentNode().toElement())
        ++depth;
    return depth;
}

/// Left out of values, which could not be read again.
bool isForbidden(QChar c) {
    constexpr QChar cAllowed[] = {QChar(u'\t'), QChar(u'\n'), QChar(u'\r')};
    return (c.category() == QChar::Other_Control && std::ranges::find(cAllowed, c) == std::end(cAllowed)) ||
           c == QChar(0xFFFE) || c == QChar(0xFFFF);
}

QString getAllowed(const QString& text) {
    QString allowed;
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (isPair)
            allowed.append(text[i]).append(text[i + 1]), ++i;
        else if (text[i].isSurrogate())
            allowed.append(QChar(QChar::ReplacementCharacter));
        else if (!isForbidden(text[i]))
            allowed.append(text[i]);
    }
    return allowed;
}

/// The element behind this one in document order, below `top` only; null at the end.
QDomElement getNext(const QDomElement& element, const QDomElement& top) {
    const QDomElement child = element.firstChildElement();
    if (!child.isNull())
        return child;
    for (QDomElement parent = element; !parent.isNull() && parent != top; parent = parent.parentNode().toElement()) {
        const QDomElement sibling = parent.nextSiblingElement();
        if (!sibling.isNull())
            return sibling;
    }
    return QDomElement();
}

bool fits(const QDomElement& element, const QString& tag, const QString& attribute, const QString& value) {
    return element.tagName() == tag &&
           (attribute.isEmpty() || (element.hasAttribute(attribute) && element.attribute(attribute) == value));
}

QDomElement findDescendant(const QDomElement& top, const QString& tag, const QString& attribute = QString(),
                           const QString& value = QString()) {
    QDomElement element = getNext(top, top);
    while (!element.isNull() && !fits(element, tag, attribute, value))
        element = getNext(element, top);
    return element;
}

} // namespace

QDomElement KyQDomDocument::create() {
    const QDomElement root = documentElement();
    const QString name = getRootElementTagName();
    if (!root.isNull() || !isName(name))
        return root;
    return appendChild(createElement(name)).toElement();
}

QDomElement KyQDomDocument::findElements(const QStringList& path) const {
    return findChildElement(documentElement(), path);
}

QDomElement KyQDomDocument::buildElements(const QStringList& path) {
    if (!std::ranges::all_of(path, &isName))
        return QDomElement();
    QDomElement element = documentElement();
    auto name = path.begin();
    for (QDomElement found; name != path.end(); element = found, ++name)
        if (found = findDescendant(element, *name); found.isNull())
            break;
    if (std::max(getDepth(element), 1) + (path.end() - name) > cMaxDepth)
        return QDomElement();
    if (element.isNull())
        element = create();
    for (; name != path.end(); ++name)
        element = addChildElement(element, *name);
    return element;
}

QDomElement KyQDomDocument::findChildElement(const QDomElement& element, const QStringList& path,
                                             const QString& attribute, const QString& value) {
    QDomElement found = element;
    for (int i = 0; i < path.size(); ++i)
        found = i + 1 < path.size() ? findDescendant(found, path[i]) : findDescendant(found, path[i], attribute, value);
    return found;
}

QDomElement KyQDomDocument::findParentElement(const QDomElement& element, const QString& tag, const QString& attribute,
                                              const QString& value) {
    QDomElement parent = element.parentNode().toElement();
    while (!parent.isNull() && !fits(parent, tag, attribute, value))
        parent = parent.parentNode().toElement();
    return parent;
}

QDomElement KyQDomDocument::addChildElement(QDomElement element, const QString& tag, const QString& attribute,
                                            const QString& value) {
    if (element.isNull() || !isName(tag) || getDepth(element) >= cMaxDepth)
        return QDomElement();
    const QDomElement child = element.appendChild(element.ownerDocument().createElement(tag)).toElement();
    setAttribute(child, attribute, value);
    return child;
}

QList<QDomElement> KyQDomDocument::listElementsByTagName(const QString& tag) const {
    return listElementsByAttrValue(tag, QString(), QString());
}

QList<QDomElement> KyQDomDocument::listElementsByAttrValue(const QString& tag, const QString& attribute,
                                                           const QString& value) const {
    QList<QDomElement> elements;
    const QDomElement root = documentElement();
    for (QDomElement element = root; !element.isNull(); element = getNext(element, root))
        if (fits(element, tag, attribute, value))
            elements.append(element);
    return elements;
}

QStringList KyQDomDocument::splitPath(const QString& path) {
    return path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
}

/// Narrower than XML, whose other names no one writes; a colon may stand behind a prefix.
bool KyQDomDocument::isName(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(':'));
    return parts.size() <= 2 && std::ranges::all_of(parts, &isPlainName);
}

void KyQDomDocument::setAttribute(QDomElement element, const QString& name, const QString& value) {
    if (!element.isNull() && isName(name))
        element.setAttribute(name, getAllowed(value));
}
