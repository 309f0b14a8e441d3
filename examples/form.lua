-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A form beside the view, in a window of its own: made with Designer, found by name, joined to the scene by signals.

local knot = KyMeshNode()
knot.Name = "knot"
knot:makeTorus(1, 0.4, 96)
knot:setColor("#4fb3ff")
knot:setPosition(0, 1.2, 0)
scene:addChild(knot)

local ground = KyMeshNode()
ground:makeGrid(24, 24)
scene:addChild(ground)

local lamp = KyLight()
lamp:lookAt(3, 6, 5, 0, 1, 0)
scene:addChild(lamp)
camera:lookAt(3.4, 2.6, 4.6, 0, 1.1, 0)

local form = loadUi("turn.ui", nil)
form:move(40, 40)

local turn, tilt = toQSlider(form:findChild("turn")), toQSlider(form:findChild("tilt"))
local color, drive = toQComboBox(form:findChild("color")), toQAbstractButton(form:findChild("drive"))
local colors = { [0] = "#8fa3b8", "#c8553d", "#e0a458", "#6fa287" }

local function follow()
    knot.Orientation = Quatd(Vec3d(0, 1, 0), math.rad(turn:value())) * Quatd(Vec3d(1, 0, 0), math.rad(tilt:value()))
end

-- Released with the form: nothing is left to do when it is closed or ends.
connect(turn, "valueChanged(int)", follow)
connect(tilt, "valueChanged(int)", follow)
connect(color, "currentIndexChanged(int)", function(index)
    knot:setColor(colors[index])
end)

follow()

return coroutine.create(function()
    -- After the first frame the view's window is there, and the form comes up over it.
    coroutine.yield()
    form:show()
    while true do
        local seconds = coroutine.yield()
        if drive:isChecked() then
            turn:setValue((turn:value() + 90 * seconds) % 360)
        end
    end
end)
