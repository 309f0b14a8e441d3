// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueTypes_p.h"

#include "KyLuaValueClass_p.h"

#include "KyBox.h"
#include "KyCallSignatures.h"
#include "KyPlane.h"
#include "KyRect.h"
#include "KyVolume.h"

#include <optional>

namespace {

char gGroupKey = 0;

using luabind::class_;
using luabind::scope;
using luabind::value;

/// Bounds are null, finite or infinite; the same for rectangles, boxes and volumes.
template <class Bound>
void defineState(class_<Bound>& boundClass) {
    boundClass.def("getType", &Bound::getType)
        .def("isNull", &Bound::isNull)
        .def("isFinite", &Bound::isFinite)
        .def("isInfinite", &Bound::isInfinite)
        .def("isPoint", &Bound::isPoint)
        .def("setNull", &Bound::setNull)
        .def("setFinite", &Bound::setFinite)
        .def("setInfinite", &Bound::setInfinite)
        .enum_("State")[(value("eNull", KyBoundState::eNull), value("eFinite", KyBoundState::eFinite),
                         value("eInfinite", KyBoundState::eInfinite))];
}

template <class T, class Bound>
void defineExtent(class_<Bound>& boundClass) {
    boundClass.def("getSize", &Bound::getSize)
        .def("setSize", &Bound::setSize)
        .def("getWidth", &Bound::getWidth)
        .def(
            "setWidth", +[](Bound& bound, double width) { bound.setWidth(kyToLuaElement<T>(width)); })
        .def("getHeight", &Bound::getHeight)
        .def(
            "setHeight", +[](Bound& bound, double height) { bound.setHeight(kyToLuaElement<T>(height)); })
        .def("setMinMax", &Bound::setMinMax)
        .def("getCenter", &Bound::getCenter)
        .def("getRadius", &Bound::getRadius)
        .def("getArea", &Bound::getArea)
        .def("setPoint", &Bound::setPoint)
        .def("translate", &Bound::translate)
        .def(
            "scale", +[](Bound& bound, double factor) { bound.scale(kyToLuaElement<T>(factor)); });
}

/// Point is the vector type of the bound's space.
template <class Point, class Bound>
void defineRelations(class_<Bound>& boundClass) {
    boundClass.def("merge", &Bound::merge)
        .def("intersects", &Bound::intersects)
        .def("getIntersects", &Bound::getIntersects)
        .def(
            "getIntersects",
            +[](const Bound& bound, const Bound& other) {
                Bound common;
                return bound.getIntersects(other, common) ? std::optional(common) : std::nullopt;
            })
        .def(
            "contains", +[](const Bound& bound, const Point& point) { return bound.contains(point); });
}

/// What boxes and volumes have beside what rectangles have.
template <class T, class Bound>
void defineSpace(class_<Bound>& boundClass, const char* name) {
    KyCallSignatures::add(name, {"__init(min, max)", "contains(point)", "contains(other)"});
    boundClass
        .def("__init", kyLuaConstructor(+[](const KyVec3<T>& min, const KyVec3<T>& max) { return Bound(min, max); }))
        .def("getLength", &Bound::getLength)
        .def(
            "setLength", +[](Bound& bound, double length) { bound.setLength(kyToLuaElement<T>(length)); })
        .def("getVolume", &Bound::getVolume)
        .def("getRect", &Bound::getRect)
        .def("setCenter", &Bound::setCenter)
        .def(
            "contains", +[](const Bound& bound, const Bound& other) { return bound.contains(other); });
}

template <class Point, class T, class Bound>
void defineBound(class_<Bound>& boundClass, const char* name) {
    KyCallSignatures::add(name, {"setMinMax(first, second)", "translate(offset)", "scale(factor)", "merge(other)",
                                 "intersects(other)", "getIntersects(other, common)", "getIntersects(other)",
                                 "contains(point)"});
    kyDefineLuaValue(boundClass);
    defineState(boundClass);
    defineExtent<T>(boundClass);
    defineRelations<Point>(boundClass);
}

template <class T>
scope makePlane(const char* name) {
    using Plane = KyPlane<T>;
    using Vec = KyVec3<T>;
    using Real = typename Plane::Real;
    class_<Plane> planeClass(name);
    KyCallSignatures::add(name, {"__init(normal, distance)", "__init(point, normal)", "getDistanceTo(point)",
                                 "projectPoint(point)", "intersectsRay(ray, point)", "intersectsRay(ray)",
                                 "intersectsPlane(other, line)", "intersectsPlane(other)"});
    kyDefineLuaValue(planeClass);
    kyDefineLuaNumber<&Plane::distance>(planeClass, "distance");
    return planeClass
        .def("__init", kyLuaConstructor(+[](const Vec& normal, double distance) {
                 return Plane(normal, kyToLuaElement<T>(distance));
             }))
        .def("__init", kyLuaConstructor(+[](const Vec& point, const Vec& normal) { return Plane(point, normal); }))
        .def_readwrite("normal", &Plane::normal)
        .def("getDistanceTo", &Plane::getDistanceTo)
        .def("projectPoint", &Plane::projectPoint)
        .def("intersectsRay", &Plane::intersectsRay)
        .def(
            "intersectsRay",
            +[](const Plane& plane, const KyRay<Real>& ray) {
                KyVec3<Real> point;
                return plane.intersectsRay(ray, point) ? std::optional(point) : std::nullopt;
            })
        .def("intersectsPlane", &Plane::intersectsPlane)
        .def(
            "intersectsPlane", +[](const Plane& plane, const Plane& other) {
                KyRay<Real> line;
                return plane.intersectsPlane(other, line) ? std::optional(line) : std::nullopt;
            });
}

template <class T>
scope makeRect(const char* name) {
    using Rect = KyRect<T>;
    using Vec = KyVec2<T>;
    class_<Rect> rectClass(name);
    KyCallSignatures::add(name, {"__init(x, y, width, height)", "__init(origin, size)"});
    defineBound<Vec, T>(rectClass, name);
    kyDefineLuaNumber<&Rect::width>(rectClass, "width");
    kyDefineLuaNumber<&Rect::height>(rectClass, "height");
    return rectClass
        .def("__init", kyLuaConstructor(+[](double x, double y, double width, double height) {
                 return Rect(kyToLuaElement<T>(x), kyToLuaElement<T>(y), kyToLuaElement<T>(width),
                             kyToLuaElement<T>(height));
             }))
        .def("__init", kyLuaConstructor(+[](const Vec& origin, const Vec& size) { return Rect(origin, size); }))
        .def_readwrite("origin", &Rect::origin);
}

template <class T>
scope makeBox(const char* name) {
    using Box = KyBox<T>;
    using Vec = KyVec3<T>;
    class_<Box> boxClass(name);
    defineBound<Vec, T>(boxClass, name);
    defineSpace<T>(boxClass, name);
    KyCallSignatures::add(name, {"__init(min, max)", "__init(center, orientation, size)", "getAxis(axis: integer)",
                                 "worldToLocal(point)", "localToWorld(point)", "frameToFrame(other, point)"});
    boxClass.enum_("Axis")[(value("eX", Box::eX), value("eY", Box::eY), value("eZ", Box::eZ))];
    return boxClass
        .def("__init", kyLuaConstructor(+[](const Vec& center, const KyQuat<T>& orientation, const Vec& size) {
                 return Box(center, orientation, size);
             }))
        .def("getOrientation", &Box::getOrientation)
        .def("setOrientation", &Box::setOrientation)
        .def(
            "getAxis",
            +[](const Box& box, double axis) {
                return box.getAxis(kyCheckLuaEnum<typename Box::Axis>(axis, Box::eNbAxes, "axis"));
            })
        .def("worldToLocal", &Box::worldToLocal)
        .def("localToWorld", &Box::localToWorld)
        .def("frameToFrame", &Box::frameToFrame);
}

template <class T>
scope makeVolume(const char* name) {
    using Volume = KyVolume<T>;
    class_<Volume> volumeClass(name);
    defineBound<KyVec3<T>, T>(volumeClass, name);
    defineSpace<T>(volumeClass, name);
    const auto setState = +[](Volume& volume, double state) {
        volume.state = kyCheckLuaEnum<int>(state, KyBoundState::eNbStates, "state");
    };
    return volumeClass.property("state", &Volume::getType, setState);
}

} // namespace

void kyBindValueTypes4(lua_State* state) {
    if (!kyMarkLuaGroup(state, &gGroupKey))
        return;
    luabind::module(state)[(makePlane<int>("Planei"), makePlane<double>("Planed"), makePlane<float>("Planef"),
                            makeRect<int>("Recti"), makeRect<double>("Rectd"), makeRect<float>("Rectf"),
                            makeBox<double>("Boxd"), makeBox<float>("Boxf"), makeVolume<int>("Volumei"),
                            makeVolume<double>("Volumed"), makeVolume<float>("Volumef"))];
    for (const auto& [alias, name] : {std::pair("Plane", "Planed"), std::pair("Rect", "Rectd"),
                                      std::pair("Box", "Boxd"), std::pair("Volume", "Volumed")})
        kySetLuaAlias(state, alias, name);
    kyCompleteLuaClasses(state);
}
