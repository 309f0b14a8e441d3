-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A table of shapes to turn by hand. It shows itself around until a hand takes the view; F1 lists the keys.
-- The globals trackball and shaper are what the hand moves: the camera, and with Control held the shapes.

local function addShape(name, color, x, z, height, shape, ...)
    local node = KyMeshNode()
    node.Name = name
    node[shape](node, ...)
    node:setColor(color)
    node:setPosition(x, height, z)
    scene:addChild(node)
    return node
end

addShape("ground", "#3c4757", 0, 0, 0, "makeGrid", 24, 24)
local shapes = {
    addShape("box", "#c8553d", -2.2, 0.6, 0.75, "makeBox", 1.5, 1.5, 1.5),
    addShape("ball", "#e0a458", 0, -1.4, 0.9, "makeSphere", 0.9, 64),
    addShape("ring", "#6fa287", 2.3, 0.2, 1.1, "makeTorus", 0.8, 0.3, 96),
    addShape("cone", "#8fa3b8", 0.4, 1.9, 0.8, "makeCone", 0.7, 1.6, 64),
}

local lamp = KyLight()
lamp:lookAt(4, 7, 5, 0, 0.5, 0)
scene:addChild(lamp)

-- What a drag does is chosen by the whole state word: buttons in the low bits, Shift 0x20000000, Control 0x40000000.
trackball.Mask2Pan = 0x20000000 + 1     -- Shift and the left button pan, beside the middle button
trackball.OrbitSpeed = 2.5              -- radians for a drag over half of the view
trackball.ZoomSpeed = 1.3
trackball.Damping = 0.25                -- a thrown view goes on for a moment
shaper.RotationStep = math.rad(15)      -- when shaper.Mode = KyShapeManipulator.eRotate

-- Three quarters from above, the centre of the table as the point to turn about.
camera:lookAt(5, 4, 7, 0, 0.6, 0)
trackball.Center = Vec3d(0, 0.6, 0)

-- A hand moves the camera, or with a press the centre, to where this coroutine has not put it: then the hand keeps it.
local function showAround()
    local function isFar(a, b)
        return math.abs(a.x - b.x) + math.abs(a.y - b.y) + math.abs(a.z - b.z) > 1e-6
    end
    local angle, center, eye = 0.62, trackball.Center
    repeat
        eye = Vec3d(center.x + 8.6 * math.sin(angle), 4, center.z + 8.6 * math.cos(angle))
        camera:lookAt(eye.x, eye.y, eye.z, center.x, center.y, center.z)
        angle = angle + 0.25 * coroutine.yield()
    until isFar(camera.Position, eye) or isFar(trackball.Center, center)
    print("the view is yours: F frames it, 1 to 6 look along the axes, O changes the projection")
end

local function turnRing()
    while true do
        shapes[3]:rotate(1, 0, 0, 0.8 * coroutine.yield())
    end
end

return coroutine.create(showAround), coroutine.create(turnRing)
