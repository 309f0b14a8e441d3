// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KyLuaClass_p.h"

class KyObject;

/// The two kinds of counted objects behind one face. An object of a class that is not counted has no references.
/// Never eUnknown.
KyLuaCounting kyGetCounting(KyObject& object);
void kyAddCountedReference(KyObject& object, KyLuaCounting counting);
/// May end the object.
void kyRemoveCountedReference(KyObject& object, KyLuaCounting counting);
unsigned kyGetNbCountedReferences(KyObject& object, KyLuaCounting counting);
