// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyApplicationExport.h"

#include "KyField.h"
#include "KyObject.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <QPointer>

class QWidget;

/// Named values that Qt style sheets are written with: a template holds "@name" where the value stands, "@@" where an
/// "@" is meant. A widget that was given a template gets a new style sheet whenever a parameter that it shows changes.
///
/// Parameters are flags (1 and 0), numbers, texts, colours (#rrggbb, or rgba(...) when they let something through) and
/// URLs (url("file")); names are of letters, digits and "_", not beginning with a digit. Widgets are not owned and are
/// forgotten when they end; their style sheets stay when the parameters end. The modified signal tells the parameter's
/// name, with eElementInserted, eAttributeChanged or eElementRemoved. Texts are UTF-8. Qt's main thread.
///
/// ```
/// KyStyleParameters& style = KyStyleParameters::get();
/// style.setParameter("accent", KyColor("#ff8800"));
/// style.apply(*button, "QPushButton { color: @accent }");
/// style.setParameter("accent", KyColor("#0088ff")); // the button follows
/// ```
class KYAPPLICATION_EXPORT KyStyleParameters : public KyObject {
public:
    KyStyleParameters();
    KyStyleParameters(const KyStyleParameters&) = delete;
    KyStyleParameters& operator=(const KyStyleParameters&) = delete;
    ~KyStyleParameters() override;

    /// The default parameters, made by initializeClass, which must have been called.
    static KyStyleParameters& get();
    /// As get(), null when there are none.
    static KyStyleParameters* find() { return msInstance; }

    static const KyType* getType();
    static KyStyleParameters* cast(KyObject* object);
    static KyObject* factory();
    static void initializeType();
    static void finalizeType();
    static void initializeClass();
    static void finalizeClass();
    const KyType* getObjectType() const override;
    /// The same parameters, without the widgets.
    KyObject* clone() const override;

    /// Adds or changes. False, reported and nothing changed, for a bad name and for a value that has no form in style
    /// sheets: of no or another type, or a number that is not finite.
    bool setParameter(const std::string& name, const KyField& value);
    /// False when there is none. Style sheets that show it get the placeholder back.
    bool removeParameter(const std::string& name);
    /// An empty field when there is none.
    KyField getParameter(const std::string& name) const;
    bool hasParameter(std::string_view name) const { return mParameters.contains(name); }
    /// Those set now.
    unsigned getNbParameters() const { return static_cast<unsigned>(mParameters.size()); }
    /// In the order of the alphabet; empty when out of range.
    const std::string& getParameterName(unsigned index) const;

    /// The text with every known placeholder replaced, once: a value is not looked at again. Unknown ones are reported,
    /// each name once until it is set, and stay as they are.
    std::string resolve(const std::string& text) const;

    /// Gives the widget the template's style sheet, now and after changes. Replaces its template.
    void apply(QWidget& widget, const std::string& styleTemplate);
    /// The widget keeps its style sheet and follows no more. False when it had no template.
    bool release(QWidget& widget);
    /// Empty when the widget has none.
    const std::string& getTemplate(const QWidget& widget) const;
    /// Number of living widgets that follow.
    unsigned getNbWidgets() const;

private:
    struct Styled {
        QPointer<QWidget> widget;
        std::string styleTemplate;
        /// What the widget was given last.
        std::string styleSheet;
    };
    using StyledList = std::vector<std::shared_ptr<Styled>>;

    static void staticInitialize();
    static void staticFinalize();

    bool lookUp(std::string_view name, std::string& text) const;
    StyledList::const_iterator findStyled(const QWidget& widget) const;
    void update(Styled& styled) const;
    void changed(KyObjectModificationType kind, const std::string& name, int index);
    int indexOf(const std::string& name) const;

    std::map<std::string, KyField, std::less<>> mParameters;
    mutable std::set<std::string, std::less<>> mReported;
    StyledList mStyled;

    static KyStyleParameters* msInstance;
    static const KyType* msType;
    static bool msIsClassInitialized;
};
