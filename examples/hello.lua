-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A gyroscope on a grid: shapes, nodes that carry other nodes, and a coroutine that turns them.
-- The program gives every script the globals scene, camera, view and host.

local function addShape(parent, color, shape, ...)
    local node = KyMeshNode()
    node[shape](node, ...)
    node:setColor(color)
    parent:addChild(node)
    return node
end

local function addRing(parent, color, radius, tube)
    local ring = addShape(parent, color, "makeTorus", radius, tube, 96)
    ring.Roughness = 0.25
    ring.Metalness = 0.6
    return ring
end

-- The ground, the light of a lamp and of the sky, and a stand.
addShape(scene, "#3c4757", "makeGrid", 24, 24)

local lamp = KyLight()
lamp:lookAt(5, 7, 6, 0, 1, 0)
lamp.Intensity = 1.1
scene:addChild(lamp)

local stand = KyNode()
scene:addChild(stand)
addShape(stand, "#3a4250", "makeCylinder", 0.9, 0.12, 64):setPosition(0, 0.06, 0)
addShape(stand, "#4a5464", "makeCone", 0.45, 0.85, 64):setPosition(0, 0.5, 0)

-- Each ring turns inside the next one, about an axis of its own.
local gyro = KyNode()
gyro:setPosition(0, 2.35, 0)
scene:addChild(gyro)

local outer = addRing(gyro, "#d9a441", 1.4, 0.07)
outer:rotate(1, 0, 0, math.pi / 2)
outer:rotate(0, 0, 1, 0.5)
local middle = addRing(outer, "#c2562d", 1.18, 0.06)
local inner = addRing(middle, "#3f7fbf", 0.97, 0.05)

local core = addShape(inner, "#e8e4da", "makeSphere", 0.5, 64)
core.Roughness = 0.2
addShape(inner, "#8a93a0", "makeCylinder", 0.045, 1.94, 24)
addShape(core, "#c2562d", "makeTorus", 0.49, 0.04, 64):rotate(1, 0, 0, 1.2)

-- Something to compare with: a box and a cone left on the ground.
local box = addShape(scene, "#5d8a56", "makeBox", 0.8, 0.8, 0.8)
box:setPosition(-2.3, 0.4, 0.6)
box:rotate(0, 1, 0, 0.5)
addShape(scene, "#7a5c99", "makeCone", 0.45, 1.0, 64):setPosition(1.9, 0.5, 0.4)

camera:lookAt(2.8, 3.2, 6.6, 0, 1.75, 0)

-- A coroutine that the script returns is resumed every frame; its yield gives the seconds since the last one.
return coroutine.create(function()
    while true do
        local seconds = coroutine.yield()
        outer:rotate(0, 0, 1, 0.4 * seconds)
        middle:rotate(1, 0, 0, 0.5 * seconds)
        inner:rotate(0, 0, 1, 1.4 * seconds)
        core:rotate(0, 1, 0, 3 * seconds)
    end
end)
