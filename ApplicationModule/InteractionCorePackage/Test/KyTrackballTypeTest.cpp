// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#include "KyTrackballFixture.h"

#include "KyLuaBinder.h"
#include "KyScriptEngine.h"

namespace {

using KyTrackballTypeTest = KyTrackballFixture;

TEST_F(KyTrackballTypeTest, AttributesReadWriteAndTell) {
    std::vector<std::string> told, names;
    KyConnection connection = trackball->modifiedSignal().connect(
        [&](KyObject*, KyObjectModificationType, const std::string& name, int) { told.push_back(name); });
    std::string before;
    for (unsigned i = 3; i < trackball->getNbAttributes(); ++i) {
        const KyAttributeInterface& attribute = *trackball->getAttribute(i);
        KyField value;
        EXPECT_TRUE(attribute.getValue(*trackball, value));
        before += attribute.getName() + " " + value.toString() + ", ";
        const KyField other = value.getKind() == cFieldKindOf<bool> ? KyField(!value.toBool()) : KyField(i + 0.0);
        if (attribute.setValue(*trackball, other))
            names.push_back(attribute.getName());
    }
    EXPECT_EQ(before, "Enabled true, MaskOrbit 1, Mask2Orbit -1, MaskPan 4, Mask2Pan -1, MaskMove 2, Mask2Move -1, "
                      "MaskZoom 32, Mask2Zoom -1, MaskRotate -1, Mask2Rotate -1, OrbitSpeed 2, PanSpeed 1, "
                      "MoveSpeed 1, ZoomSpeed 1.1, RotateSpeed 1, OrbitInverseCtrl true, MoveInverseCtrl false, "
                      "RotateInverseCtrl false, AutoCenter true, OrthographicMovements false, Center 0 0 0, "
                      "OrthonormalBasis 1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1, Damping 0, ");
    EXPECT_EQ(told, names);
    EXPECT_EQ(names.size(), 22u);
    EXPECT_EQ(trackball->getMask2Rotate(), 13);
    told.clear();
    trackball->setPanSpeed(NAN);
    trackball->setMaskPan(trackball->getMaskPan());
    trackball->setOrthonormalBasis(KyMat4d());
    trackball->setOrthonormalBasis(KyMat4d::fromScale(KyVec3d(1, 0, 1)));
    connection.disconnect();
    EXPECT_TRUE(told.empty());
    trackball->setOrthonormalBasis(KyMat4d::fromScale(KyVec3d(-2, 3, 4)));
    EXPECT_EQ(trackball->getOrthonormalBasis(), KyMat4d::fromScale(KyVec3d(-1, 1, 1)));
}

TEST_F(KyTrackballTypeTest, ScriptsSteerIt) {
    KyTrackballManipulator::initializeClass();
    KyCamera::initializeType();
    KyScriptEngine::initializeClass();
    KyLuaBinder::initializeClass();
    EXPECT_TRUE(KyScriptEngine::get().executeChunk(
        "bindAllClasses() local t, c, n = KyTrackballManipulator(), KyCamera(), KyNode() "
        "t.Object = c t.MaskOrbit = 2147483649 t:setPanSpeed(3) t:setCenter(Vec3d(1, 2, 3)) "
        "assert(t.MaskOrbit == -2147483647 and t:getPanSpeed() == 3 and t:isAutoCenter() and t.Object == c) "
        "assert(not t:focusFront(n) and not t:coast(1)) t:destroy()"));
    KyScriptEngine::finalizeClass();
    KyLuaBinder::finalizeClass();
}

} // namespace
