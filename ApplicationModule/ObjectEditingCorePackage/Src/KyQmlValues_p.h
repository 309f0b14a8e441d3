// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyField.h"

#include <QVariant>

#include <string>

/// Values between attributes, parameters and elements of the object model and QML. They follow toQVariant and toKyField
/// with four differences that an editor of objects needs: lists are lists on both sides, a Qt object that stands for
/// no object of the model is refused instead of read as null, an empty text is a text, and a day is the moment at which
/// it begins here: JavaScript takes a day for one in UTC, which is another day west of Greenwich.
namespace KyQmlValues {

/// Objects become their bindings, null where the registered converter makes none.
QVariant toQml(const KyField& field);
QVariant toQml(KyObject* object);
/// For a place that holds values of a kind, which parses texts that do not convert; no kind is any. JavaScript's null
/// and undefined give an empty field, which reads as no object. False, and the field unchanged, for values that no
/// field holds and for numbers beyond a float's range.
bool toField(const QVariant& variant, KyFieldKind wanted, KyField& field);

/// The meta-type that a property of this kind shows. Numbers, which QML would wrap, cut or make out of nothing on the
/// way, truth values and URLs, which it would resolve against the document, travel as QVariant.
int getMetaType(KyFieldKind kind);
/// Puts the value over the constructed one at `target`; a value that does not convert leaves the type's default.
void store(QVariant value, int metaType, void* target);
/// The value as a message shows it: its text, else its type.
std::string describe(const QVariant& variant);

} // namespace KyQmlValues
