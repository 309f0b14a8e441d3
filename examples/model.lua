-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- Loads a model file that lies beside this script, shows it three times and lets the gears drive each other.

local function addGear(x, y, degrees, color)
    local gear = KyMeshNode()
    -- While a script runs, relative paths begin at its own folder.
    assert(gear:loadModel("gear.obj"), "the model could not be read")
    gear:setPosition(x, y, 0)
    gear:rotate(0, 0, 1, math.rad(degrees))
    scene:addChild(gear)

    -- The parts of a model are nodes with the names that the file gives them.
    local rim = gear:find("steel").Children[0]
    rim:setColor(color)
    rim.Metalness = 0.5
    rim.Roughness = 0.35
    return gear
end

-- The gears have a pitch radius of 1, so neighbours stand 2 apart; each is turned until its teeth meet gaps.
local left = addGear(-1.732, 0, 0, "#8fa3b8")
local top = addGear(0, 1, 15, "#c8553d")
local right = addGear(1.732, 0, 6, "#8fa3b8")

local ground = KyMeshNode()
ground:makeGrid(20, 20)
ground:setColor("#3c4757")
ground:setPosition(0, -1.3, 0)
scene:addChild(ground)

local lamp = KyLight()
lamp:lookAt(3, 4, 6, 0, 0, 0)
scene:addChild(lamp)

camera:lookAt(1.6, 1.4, 6.2, 0, 0.1, 0)

return coroutine.create(function()
    while true do
        local angle = 0.6 * coroutine.yield()
        left:rotate(0, 0, 1, angle)
        top:rotate(0, 0, 1, -angle)
        right:rotate(0, 0, 1, angle)
    end
end)
