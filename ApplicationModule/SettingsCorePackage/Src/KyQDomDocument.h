// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"
#include "KyColor.h"
#include "KyField.h"

#include <QDomDocument>
#include <QLatin1String>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <concepts>

/// An XML document bound to a file, whose values are attributes of elements found by path.
///
/// A path is element names separated by "/", empty parts skipped; each name stands for the first element of that name
/// anywhere below the one before, in document order, so that reading finds what writing made. The empty path is the
/// document element. Reading never fails: it falls back to the default for a missing attribute and to zero for a bad
/// number. For the user-interface thread; not to be copied, since copies would share their elements.
///
/// ```
/// KySettings settings;
/// settings.setFilePath("host.xml");
/// settings.open();
/// const int width = settings.getAttribute("View/Window", "width", 800);
/// settings.setAttribute("View/Window", "width", width + 1);
/// settings.save();
/// ```
class KYAPPLICATION_EXPORT KyQDomDocument : public QDomDocument {
public:
    /// Elements in each other beyond which a document is refused and none is made: Qt's document class calls itself for
    /// each level, and the stack ends.
    static constexpr int cMaxDepth = 1000;

    /// Closed; nothing is read yet.
    explicit KyQDomDocument(const QString& filePath);
    KyQDomDocument(const KyQDomDocument&) = delete;
    KyQDomDocument& operator=(const KyQDomDocument&) = delete;
    virtual ~KyQDomDocument();

    /// The name of the element that create() makes; empty here.
    virtual QString getRootElementTagName() const;
    /// Changes where open() and save() go; the content stays.
    virtual void setFilePath(const QString& filePath);
    /// Makes the document element and returns it, or the one that is there; null when there is no name for it.
    virtual QDomElement create();
    /// Reads the file. False, without a report, when it cannot be read or is no XML: the document is then empty and
    /// closed, and the first save() to its path keeps the unreadable file with ".bak" appended to its name.
    virtual bool open();
    /// Clears the document, its path and the opened flag.
    virtual void close();
    /// Writes the file beside the one that is there and replaces that only once all is written; where the directory
    /// refuses a second file it is written in place. False, and the old file stays, for an empty path, a file or
    /// directory that refuses, a full disk, a link that leads to itself, content that could not be read again,
    /// and an empty document in place of a file with content. Links and permissions stay.
    virtual bool save();
    /// Takes the text for content. False, with a report of line and column, when it is no XML: the document is then
    /// empty and closed.
    virtual bool load(const QString& text);

    const QString& getFilePath() const { return mFilePath; }
    /// True from a successful open() or load() to close().
    bool isOpened() const { return mIsOpened; }
    /// The file's name without directories.
    QString getFileName() const;
    /// The file's absolute directory with native separators, one of them at the end if asked; empty for an empty path.
    QString getFileDir(bool withSeparator) const;

    /// The value, or the default for a null element or a missing attribute; a bad number gives 0.
    static QString getAttribute(const QDomElement& element, const QString& name, const QString& defaultValue);
    static QString getAttribute(const QDomElement& element, const QString& name, const char* defaultValue);
    static QString getAttribute(const QDomElement& element, const QString& name, QLatin1String defaultValue);
    static int getAttribute(const QDomElement& element, const QString& name, int defaultValue);
    static unsigned int getAttribute(const QDomElement& element, const QString& name, unsigned int defaultValue);
    /// Values out of range give an infinity.
    static float getAttribute(const QDomElement& element, const QString& name, float defaultValue);
    static double getAttribute(const QDomElement& element, const QString& name, double defaultValue);
    /// True for exactly "true", false for any other text.
    template <std::same_as<bool> T>
    static bool getAttribute(const QDomElement& element, const QString& name, T defaultValue) {
        return getBool(element, name, defaultValue);
    }
    /// Three or four numbers separated by ";", without the fourth opaque; else the default.
    static KyColor getAttribute(const QDomElement& element, const QString& name, const KyColor& defaultValue);
    static KyColor getAttribute(const QDomElement& element, const QString& name, KyColor::Name defaultValue);
    /// The text parsed into the type of the default, a text in UTF-8 when that is empty; unparsable text gives the
    /// default.
    static KyField getAttribute(const QDomElement& element, const QString& name, const KyField& defaultValue);

    /// Does nothing for a null element and for a name that XML does not allow. What XML cannot hold is lost: control
    /// characters other than tab, line feed and carriage return, U+FFFE and U+FFFF; half a surrogate becomes U+FFFD.
    static void setAttribute(QDomElement element, const QString& name, const QString& value);
    /// In UTF-8.
    static void setAttribute(QDomElement element, const QString& name, const char* value);
    static void setAttribute(QDomElement element, const QString& name, QLatin1String value);
    static void setAttribute(QDomElement element, const QString& name, int value);
    static void setAttribute(QDomElement element, const QString& name, unsigned int value);
    /// With 16 digits after the point, so that what is smaller than 5e-17 becomes 0: small quantities are to be scaled.
    static void setAttribute(QDomElement element, const QString& name, float value);
    static void setAttribute(QDomElement element, const QString& name, double value);
    template <std::same_as<bool> T>
    static void setAttribute(QDomElement element, const QString& name, T value) {
        setAttribute(element, name, QLatin1String(value ? "true" : "false"));
    }
    /// "red;green;blue;alpha", each with 6 significant digits.
    static void setAttribute(QDomElement element, const QString& name, const KyColor& value);
    static void setAttribute(QDomElement element, const QString& name, KyColor::Name value);
    /// The field's text with 17 significant digits, taken for UTF-8 whatever the default character set: bytes that are
    /// no UTF-8 become U+FFFD, so that texts in other sets are to be converted before.
    static void setAttribute(QDomElement element, const QString& name, const KyField& value);

    /// Empty when the element or the attribute is missing.
    QString getAttribute(const QString& path, const QString& name) const;
    /// As the static one of the same type, for the element of the path.
    template <class T>
    auto getAttribute(const QString& path, const QString& name, const T& defaultValue) const {
        return getAttribute(findElements(splitPath(path)), name, defaultValue);
    }
    /// Makes the elements that are missing. False, and nothing changes, for a path that cannot be made and a bad name.
    template <class T>
    bool setAttribute(const QString& path, const QString& name, const T& value) {
        const QDomElement element = isName(name) ? buildElements(splitPath(path)) : QDomElement();
        setAttribute(element, name, value);
        return !element.isNull();
    }

    /// Follows the path down, each step to the first element of that name below, the last one only to one whose
    /// attribute has exactly that value, unless the attribute's name is empty. Null when there is none.
    static QDomElement findChildElement(const QDomElement& element, const QStringList& path,
                                        const QString& attribute = QString(), const QString& value = QString());
    /// The nearest element above of that name, whose attribute has exactly that value unless its name is empty.
    static QDomElement findParentElement(const QDomElement& element, const QString& tag,
                                         const QString& attribute = QString(), const QString& value = QString());
    /// Appends a new element, with the attribute unless its name is empty. Null for a null element, a bad name, and
    /// beyond cMaxDepth.
    static QDomElement addChildElement(QDomElement element, const QString& tag, const QString& attribute = QString(),
                                       const QString& value = QString());
    /// The elements of that name in document order, the document element among them.
    QList<QDomElement> listElementsByTagName(const QString& tag) const;
    /// Those of them whose attribute has exactly that value.
    QList<QDomElement> listElementsByAttrValue(const QString& tag, const QString& attribute,
                                               const QString& value) const;

protected:
    /// Null when a step is missing.
    QDomElement findElements(const QStringList& path) const;
    /// As findElements, but appends what is missing, the document element too. Null, and nothing changes, when that
    /// cannot be: for names that XML does not allow, beyond cMaxDepth, and in a document without a name for its own
    /// element.
    QDomElement buildElements(const QStringList& path);

private:
    static QStringList splitPath(const QString& path);
    static bool isName(const QString& text);
    static bool getBool(const QDomElement& element, const QString& name, bool defaultValue);
    bool take(const QDomDocument& parsed, bool isParsed);
    bool keepUnreadable();

    QString mFilePath;
    /// The paths of files that could not be parsed and are not kept yet.
    QSet<QString> mUnreadable;
    bool mIsOpened : 1;
};
