-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- Animation by coroutines: each part of the picture has its own, and reads like a story from top to bottom.
-- coroutine.yield() waits for the next frame and returns the seconds since the last one.

local size = 9
local spacing = 0.62

-- Lets time go by.
local function wait(seconds)
    while seconds > 0 do
        seconds = seconds - coroutine.yield()
    end
end

-- Calls move(share) every frame, share going from 0 to 1 in the given time.
local function during(seconds, move)
    local time = 0
    while time < seconds do
        time = math.min(time + coroutine.yield(), seconds)
        move(time / seconds)
    end
end

local function addShape(color, shape, ...)
    local node = KyMeshNode()
    node[shape](node, ...)
    node:setColor(color)
    scene:addChild(node)
    return node
end

-- A field of pillars, coloured from one corner to the other.
local pillars = {}
for row = 1, size do
    for column = 1, size do
        local pillar = KyMeshNode()
        pillar:makeBox(0.5, 2, 0.5)
        local x, z = row - (size + 1) / 2, column - (size + 1) / 2
        local share = (row + column - 2) / (2 * size - 2)
        pillar:setColor(0.10 + 0.80 * share, 0.38 + 0.24 * math.sin(math.pi * share), 0.66 - 0.50 * share)
        pillar.Roughness = 0.4
        scene:addChild(pillar)
        pillars[#pillars + 1] = { node = pillar, x = x * spacing, z = z * spacing, phase = math.sqrt(x * x + z * z) }
    end
end

addShape("#3c4757", "makeGrid", 30, 30):setPosition(0, -1.6, 0)

local function getHeight(pillar, time)
    return 0.55 * math.sin(2.2 * time - 0.9 * pillar.phase)
end

-- One clock for all of them.
local now = 0

local function ripple()
    while true do
        for _, pillar in ipairs(pillars) do
            pillar.node:setPosition(pillar.x, getHeight(pillar, now), pillar.z)
        end
        now = now + coroutine.yield()
    end
end

-- A ball that hops from pillar to pillar and rests a moment on each.
local ball = addShape("#f2e6c9", "makeSphere", 0.22, 48)
ball.Roughness = 0.15

local function hop()
    local from = pillars[#pillars]
    while true do
        local to = pillars[math.random(#pillars)]
        during(0.7, function(share)
            local height = (1 - share) * getHeight(from, now) + share * getHeight(to, now)
            ball:setPosition(from.x + share * (to.x - from.x),
                             height + 1.22 + 4 * share * (1 - share),
                             from.z + share * (to.z - from.z))
        end)
        from = to
        during(0.4, function() ball:setPosition(to.x, getHeight(to, now) + 1.22, to.z) end)
    end
end

-- Four cones at the corners that take turns to stretch.
local cones = {}
for i, color in ipairs { "#2f6fa8", "#7fb069", "#e4572e", "#f3a712" } do
    cones[i] = addShape(color, "makeCone", 0.4, 1.2, 48)
    local angle = math.pi * (0.25 + 0.5 * i)
    cones[i]:setPosition(5 * math.cos(angle), -1, 5 * math.sin(angle))
end

local function takeTurns()
    while true do
        for _, cone in ipairs(cones) do
            during(0.3, function(share) cone:setScale(1, 1 + 0.8 * math.sin(math.pi * share), 1) end)
            wait(0.2)
        end
    end
end

-- The camera drifts around it all.
local function drift()
    local angle = 0.6
    while true do
        camera:lookAt(9 * math.sin(angle), 5.2, 9 * math.cos(angle), 0, -0.3, 0)
        angle = angle + 0.12 * coroutine.yield()
    end
end

return coroutine.create(ripple), coroutine.create(hop), coroutine.create(takeTurns), coroutine.create(drift)
