// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

/// Forward declarations of the maths types, and the short names by element type.
/// Include this in headers that only pass these types by reference.

template <class T>
class KyVec2;
template <class T>
class KyVec3;
template <class T>
class KyQuat;
template <class T>
class KyMat4;
template <class T>
class KyRay;
template <class T>
class KyPlane;
template <class T>
class KyIntersectionPoint;
template <class T>
class KyWayPoint;
template <class T>
class KyRect;
template <class T>
class KyVolume;
template <class T>
class KyBox;
class KyColor;
class KyEasing;

using KyVec2i = KyVec2<int>;
using KyVec2f = KyVec2<float>;
using KyVec2d = KyVec2<double>;
using KyVec3i = KyVec3<int>;
using KyVec3f = KyVec3<float>;
using KyVec3d = KyVec3<double>;
using KyQuatf = KyQuat<float>;
using KyQuatd = KyQuat<double>;
using KyMat4f = KyMat4<float>;
using KyMat4d = KyMat4<double>;
using KyRayf = KyRay<float>;
using KyRayd = KyRay<double>;
using KyPlanei = KyPlane<int>;
using KyPlanef = KyPlane<float>;
using KyPlaned = KyPlane<double>;
using KyIntersectionPointf = KyIntersectionPoint<float>;
using KyIntersectionPointd = KyIntersectionPoint<double>;
using KyWayPointf = KyWayPoint<float>;
using KyWayPointd = KyWayPoint<double>;
using KyRecti = KyRect<int>;
using KyRectf = KyRect<float>;
using KyRectd = KyRect<double>;
using KyVolumei = KyVolume<int>;
using KyVolumef = KyVolume<float>;
using KyVolumed = KyVolume<double>;
using KyBoxf = KyBox<float>;
using KyBoxd = KyBox<double>;
