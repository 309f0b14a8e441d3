// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyLuaValueClass_p.h"
#include "KyLuaValueTypes_p.h"

#include "KyCallSignatures.h"
#include "KyColor.h"

namespace {

float toFloat(double number) {
    return kyToLuaElement<float>(number);
}

void defineNames(luabind::class_<KyColor>& colorClass) {
    using luabind::value;
    colorClass.enum_(
        "Name")[(value("eAqua", KyColor::eAqua), value("eBlack", KyColor::eBlack), value("eBlue", KyColor::eBlue),
                 value("eFuchsia", KyColor::eFuchsia), value("eGray", KyColor::eGray), value("eGreen", KyColor::eGreen),
                 value("eLime", KyColor::eLime), value("eMaroon", KyColor::eMaroon), value("eNavy", KyColor::eNavy),
                 value("eOlive", KyColor::eOlive), value("eOrange", KyColor::eOrange),
                 value("ePurple", KyColor::ePurple), value("eRed", KyColor::eRed), value("eSilver", KyColor::eSilver),
                 value("eTeal", KyColor::eTeal), value("eWhite", KyColor::eWhite), value("eYellow", KyColor::eYellow))];
}

KyColor readColor(const std::string& htmlText) {
    KyColor color;
    if (!KyColor::fromHtml(htmlText, color))
        throw KyScriptError('"' + htmlText + "\" is no html colour");
    return color;
}

void defineConstructors(luabind::class_<KyColor>& colorClass) {
    colorClass
        .def("__init", kyLuaConstructor(+[](double red, double green, double blue) {
                 return KyColor(toFloat(red), toFloat(green), toFloat(blue));
             }))
        .def("__init", kyLuaConstructor(+[](double red, double green, double blue, double alpha) {
                 return KyColor(toFloat(red), toFloat(green), toFloat(blue), toFloat(alpha));
             }))
        .def("__init", kyLuaConstructor(+[](double name) {
                 return KyColor(kyCheckLuaEnum<KyColor::Name>(name, KyColor::eNbNames, "colour"));
             }))
        .def("__init", kyLuaConstructor(&readColor));
}

void defineOperators(luabind::class_<KyColor>& colorClass) {
    colorClass
        .def(
            "__add", +[](const KyColor& a, const KyColor& b) { return a + b; })
        .def(
            "__sub", +[](const KyColor& a, const KyColor& b) { return a - b; })
        .def(
            "__mul", +[](const KyColor& a, const KyColor& b) { return a * b; })
        .def(
            "__mul", +[](const KyColor& color, double factor) { return color * toFloat(factor); })
        .def(
            "__mul", +[](double factor, const KyColor& color) { return color * toFloat(factor); });
}

luabind::scope makeColor() {
    luabind::class_<KyColor> colorClass("Color");
    KyCallSignatures::add("Color", {"__init(red, green, blue, alpha?)", "__init(name: integer)", "__init(html)",
                                    "setHSV(hue, saturation, value)"});
    kyDefineLuaValue(colorClass);
    defineNames(colorClass);
    defineConstructors(colorClass);
    defineOperators(colorClass);
    kyDefineLuaNumber<&KyColor::red>(colorClass, "red");
    kyDefineLuaNumber<&KyColor::green>(colorClass, "green");
    kyDefineLuaNumber<&KyColor::blue>(colorClass, "blue");
    kyDefineLuaNumber<&KyColor::alpha>(colorClass, "alpha");
    colorClass.def("setGamma", &KyColor::setGamma)
        .def("setHSV", &KyColor::setHSV)
        .def("RGB2HSV", &KyColor::RGB2HSV)
        .def("HSV2RGB", &KyColor::HSV2RGB)
        .def("getHtmlName", &KyColor::getHtmlName)
        .def(
            "toR8G8B8A8", +[](const KyColor& color) { return static_cast<double>(color.toR8G8B8A8()); });
    return colorClass;
}

} // namespace

void kyBindColorType(lua_State* state) {
    luabind::module(state)[makeColor()];
}
