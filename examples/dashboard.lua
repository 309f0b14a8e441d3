-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- QML over the 3D view, bound to the camera and to an object: turn the view, or move the sliders, and both follow.
-- Beside the bar the mouse turns the camera. Edit qml/dashboard.qml while this runs: it is loaded again.

local exhibit = KyMeshNode()
exhibit.Name = "exhibit"
exhibit:makeTorus(0.9, 0.34, 128)
exhibit:setColor("#e0a458")
exhibit:setPosition(0, 1.35, 0)
exhibit.Roughness = 0.3
scene:addChild(exhibit)

local ground = KyMeshNode()
ground:makeGrid(24, 24)
ground:setColor("#3c4757")
scene:addChild(ground)

local lamp = KyLight()
lamp:lookAt(3, 6, 5, 0, 1, 0)
scene:addChild(lamp)

camera:lookAt(3.4, 2.6, 4.6, 0, 1.0, 0)
trackball.Center = Vec3d(0, 1.0, 0)

local overlay = KyQmlPass.createQmlPassOverlayView(view, true, true)
local pass = overlay.MainPass
pass:setContextObject("eye", camera)
pass:setContextObject("exhibit", exhibit)
-- While a script runs, relative paths begin at its own folder.
pass:setQml("qml/dashboard.qml")

return coroutine.create(function()
    exhibit:rotate(1, 0, 0, 1.0)
    while true do
        exhibit:rotate(0, 0.3, 1, 0.6 * coroutine.yield())
    end
end)
