-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- Flies the camera through gates with a pad or a 3D mouse. Composite channels join all devices to one set of controls,
-- so that the flying knows nothing of devices. Hold the button A, or the first one of the mouse, to go faster.
-- Without a device an autopilot feeds one.

local function node(name, color)
    local made = KyMeshNode()
    made.Name = name
    made:setColor(color)
    scene:addChild(made)
    return made
end

local ground = KyMeshNode()
ground:makeGrid(400, 80)
ground:setColor("#2c3a4a")
scene:addChild(ground)

local lamp = KyLight()
lamp:lookAt(30, 60, 20, 0, 0, 0)
scene:addChild(lamp)

math.randomseed(4)
local cNbGates, cRadius = 24, 60
for i = 1, cNbGates do
    local angle = 2 * math.pi * i / cNbGates
    local gate = node("gate " .. i, i % 2 == 0 and "#e0a458" or "#4fb3ff")
    gate:makeTorus(4, 0.35, 48)
    gate:rotate(1, 0, 0, math.pi / 2)
    gate:rotate(0, 1, 0, -angle)
    gate:setPosition(cRadius * math.cos(angle), 8 + 3 * math.sin(3 * angle), cRadius * math.sin(angle))
    for _ = 1, 4 do
        local far = cRadius + (math.random() < 0.5 and -1 or 1) * (12 + 25 * math.random())
        local at, height = angle + 0.25 * math.random(), 2 + 9 * math.random()
        local tower = node("tower", "#56697e")
        tower:makeBox(2.5, height, 2.5)
        tower:setPosition(far * math.cos(at), height / 2, far * math.sin(at))
    end
end

-- A control stands at 0 until its sources say otherwise: each update begins with the constant and adds them up.
local function control()
    local axis = KyCompositeAxisObject()
    axis.Absolute, axis.DeadZoneWidth = true, 0.08
    axis:insertConstant(axis.eOperationSet, 0)
    return axis
end

local controls, boost, autopilot

-- The names that pads and 3D mice give to their axes, and which way these push.
local cSources = {
    forward = { LeftY = -1, Z = -1 }, side = { LeftX = 1, X = 1 }, lift = { RightTrigger = 1, LeftTrigger = -1, Y = 1 },
    turn = { RightX = -1, RY = 1 }, nod = { RightY = -1, RX = 1 },
}

-- What is there now; an autopilot only where there is nothing else.
local function findDevices()
    local found = {}
    for i = 0, devices.NbDevices - 1 do
        local device = devices.Devices[i]
        if not autopilot or device.Name ~= "Autopilot" then
            found[#found + 1] = device
        end
    end
    if #found > 0 then
        autopilot = nil
        collectgarbage()
        return found
    end
    if not autopilot then
        print("no device is there; an autopilot flies")
        autopilot = KyVirtualDevice.create("Autopilot", 3, 1, 0)
        for i, name in ipairs { "LeftY", "RightX", "RightY" } do
            autopilot:setAxisName(i - 1, name)
            autopilot:setAxisMode(i - 1, true)
        end
    end
    return { autopilot:getDevice() }
end

-- Those that were there, while all of them still are.
local joined
local function hasChanged()
    if not joined then
        return true
    end
    for _, device in ipairs(joined) do
        if not device.Valid then
            return true
        end
    end
    return devices.NbDevices ~= #joined
end

local function join()
    joined = findDevices()
    controls, boost = {}, KyCompositeButtonObject()
    boost:insertConstant(boost.eOperationSet, 0)
    for name in pairs(cSources) do
        controls[name] = control()
    end
    for _, device in ipairs(joined) do
        for name, sources in pairs(cSources) do
            for axisName, sign in pairs(sources) do
                local axis, target = device:findAxis(axisName), controls[name]
                if axis then
                    target:insertMappedAxis(axis, sign > 0 and target.eOperationAdd or target.eOperationSubtract)
                end
            end
        end
        local button = device:findButton("A") or (#device.Buttons > 0 and device.Buttons[0])
        if button then
            boost:insertMappedButton(button, boost.eActionWhilePressed, 1, boost.eOperationSetValue)
        end
    end
end

local position, heading, pitch = Vec3d(cRadius, 8, 0), math.pi, 0

-- Looks a gate ahead along the ring and holds the stick so that the camera turns there.
local function steer()
    local ahead = math.atan2(position.z, position.x) + 0.3
    local target = Vec3d(cRadius * math.cos(ahead), 8 + 3 * math.sin(3 * ahead), cRadius * math.sin(ahead)) - position
    local wanted = math.atan2(-target.x, -target.z)
    local off = (wanted - heading + math.pi) % (2 * math.pi) - math.pi
    local up = math.atan2(target.y, math.sqrt(target.x ^ 2 + target.z ^ 2)) - pitch
    autopilot:rest()
    autopilot:setAxisValue(0, -0.8)
    autopilot:setAxisValue(1, math.max(-1, math.min(1, -2 * off)))
    autopilot:setAxisValue(2, math.max(-1, math.min(1, -2 * up)))
end

local function fly(seconds)
    for _, axis in pairs(controls) do
        axis:update()
    end
    boost:update()
    local speed = (boost.Value ~= 0 and 40 or 14) * seconds
    heading = heading + 1.4 * controls.turn.Value * seconds
    pitch = math.max(-1.4, math.min(1.4, pitch + 1.0 * controls.nod.Value * seconds))
    local orientation = Quatd(Vec3d(0, 1, 0), heading) * Quatd(Vec3d(1, 0, 0), pitch)
    position = position + orientation:rotate(
        Vec3d(controls.side.Value, controls.lift.Value, -controls.forward.Value)) * speed
    position.y = math.max(1, position.y)
    camera.Position, camera.Orientation = position, orientation
end

camera.Near, camera.Far = 0.2, 500

return coroutine.create(function()
    while true do
        local seconds = math.min(0.1, coroutine.yield())
        if hasChanged() then
            join()
        end
        if autopilot then
            steer()
        end
        fly(seconds)
    end
end)
