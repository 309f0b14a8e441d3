-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A form of widgets in the 3D view, made with a form designer: its sliders turn the model. Keys and the wheel work
-- in it too. Beside the form the mouse turns the camera.

local gear = KyMeshNode()
-- While a script runs, relative paths begin at its own folder.
assert(gear:loadModel("gear.obj"), "the model could not be read")
local rim = gear:find("steel").Children[0]
rim.Metalness, rim.Roughness = 0.5, 0.35
scene:addChild(gear)

local ground = KyMeshNode()
ground:makeGrid(20, 20)
ground:setColor("#3c4757")
ground:setPosition(0, -1.5, 0)
scene:addChild(ground)

local lamp = KyLight()
lamp:lookAt(3, 5, 6, 0, 0, 0)
scene:addChild(lamp)

camera:lookAt(-0.7, 0.9, 4.6, -0.7, 0, 0)
trackball.Center = Vec3d(0, 0, 0)

-- The overlay covers a part of the view; its picture has as many pixels as that part.
local overlay = KyQtPass.createQtPassOverlayView(view, true, true)
overlay.Area = Rectd(0.03, 0.08, 0.30, 0.46)
local form = overlay.MainPass
if not form:loadForm("turn.ui") then
    error(form:getError())
end

local colors = { [0] = "#8fa3b8", "#c8553d", "#e0a458", "#6fa287" }
local turned, tilted, painted

local function follow()
    local turn, tilt = form:getWidgetProperty("turn", "value"), form:getWidgetProperty("tilt", "value")
    local color = form:getWidgetProperty("color", "currentIndex")
    if turn ~= turned or tilt ~= tilted then
        turned, tilted = turn, tilt
        gear.Orientation = Quatd(Vec3d(0, 1, 0), math.rad(tilt)) * Quatd(Vec3d(0, 0, 1), math.rad(turn))
    end
    if color ~= painted then
        painted = color
        rim:setColor(colors[color])
    end
end

return coroutine.create(function()
    while true do
        local seconds = coroutine.yield()
        if form:getWidgetProperty("drive", "checked") then
            form:setWidgetProperty("turn", "value", (form:getWidgetProperty("turn", "value") + 90 * seconds) % 360)
        end
        follow()
    end
end)
