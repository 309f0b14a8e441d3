-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- Every channel of every input device as a bar, live. Plug a pad or a 3D mouse in, or out. Without one, a device that
-- this script makes and feeds shows what there would be.

local cPaper, cPanel, cTrack, cMiddle = Color("#0d1219"), Color("#151d28"), Color("#1f2a38"), Color("#54677c")
local cLabel, cText = Color("#7d8fa3"), Color("#dfe7ef")
local cAxis, cButton, cTurn = Color("#4fb3ff"), Color("#5fd38d"), Color("#ffb454")
local cWidth, cRow, cTop, cLeft, cLength = 560, 30, 60, 170, 300

local scene = Ky2DScene()

local function add(parent, node, style)
    for name, value in pairs(style) do
        node.Style[name] = value
    end
    parent:insertChild(node, -1)
    return node
end

local function rect(parent, x, y, width, height, color, radius)
    local node = Ky2DRect()
    node.X, node.Y, node.Width, node.Height, node.RX = x, y, width, height, radius or 0
    return add(parent, node, { FillColor = color })
end

local function text(parent, x, y, words, size, color)
    local node = Ky2DText()
    node.X, node.Y, node.Text = x, y, words
    return add(parent, node, {
        FontFamily = "sans-serif", FontSize = size, FillColor = color, TextVerticalAnchor = Ky2DStyle.eCenter,
    })
end

-- A row is a label, a track with what fills it, and a number; `read` gives the filled part of the track and the number.
local function row(panel, index, label, color, read)
    local y = cTop + cRow * index
    text(panel, 20, y, label, 13, cLabel)
    rect(panel, cLeft, y - 7, cLength, 14, cTrack, 4)
    local fill = rect(panel, cLeft, y - 7, 0, 14, color, 4)
    local number = text(panel, cLeft + cLength + 16, y, "", 13, cText)
    return function()
        local from, to, value = read()
        fill.X, fill.Width, number.Text = cLeft + cLength * from, cLength * (to - from), value
    end
end

local function readAxis(axis)
    return function()
        local low, high = axis.Minimum, axis.Maximum
        local function place(value)
            return math.max(0, math.min(1, (value - low) / (high - low)))
        end
        local value, rest = place(axis.Value), place(0)
        return math.min(value, rest), math.max(value, rest), ("%+.2f"):format(axis.Value)
    end
end

local function readButton(button)
    return function()
        return 0, button.Value / math.max(1, button.NbValues - 1), tostring(button.Value)
    end
end

local function readOrientation(orientation)
    return function()
        local turn = orientation.Absolute and orientation.Value or orientation.DeltaValue
        local angle = 2 * math.acos(math.max(-1, math.min(1, turn.w)))
        return 0, angle / math.pi, ("%.1f°"):format(math.deg(angle))
    end
end

local rows, panels = {}, {}

local function showDevice(device, x)
    local channels = {}
    for _, kind in ipairs { { "Axes", cAxis, readAxis }, { "Buttons", cButton, readButton },
                            { "Orientations", cTurn, readOrientation } } do
        local list, color, read = device[kind[1]], kind[2], kind[3]
        for i = 0, #list - 1 do
            channels[#channels + 1] = { list[i].Name, color, read(list[i]) }
        end
    end
    local panel = Ky2DGroup()
    panel.Translation = Vec2d(x, 30)
    scene:insertChild(panel, -1)
    rect(panel, 0, 0, cWidth, cTop + cRow * #channels + 12, cPanel, 14)
    text(panel, 20, 28, device.Name, 16, cText)
    for i, channel in ipairs(channels) do
        rows[#rows + 1] = row(panel, i - 0.5, channel[1], channel[2], channel[3])
    end
    panels[#panels + 1] = panel
end

local view = Ky2DView()
view.Caption, view.BackgroundColor = "Devices", cPaper
view.Width, view.Height = 1200, 760
view.Scene = scene

local shown, simulation = {}, nil

local function hasChanged()
    for _, device in ipairs(shown) do
        if not device.Valid then
            return true
        end
    end
    return devices.NbDevices ~= #shown
end

local function showAll()
    for _, panel in ipairs(panels) do
        scene:removeChild(panel, true)
    end
    rows, panels, shown = {}, {}, {}
    for i = 0, devices.NbDevices - 1 do
        shown[i + 1] = devices.Devices[i]
        showDevice(shown[i + 1], 30 + (cWidth + 30) * i)
    end
    view:fit()
end

local function simulate()
    print("no device is there; showing a simulated one")
    simulation = KyVirtualDevice.create("Simulated pad", 6, 8, 1)
    for i, name in ipairs { "LeftX", "LeftY", "RightX", "RightY", "LeftTrigger", "RightTrigger" } do
        simulation:setAxisName(i - 1, name)
        simulation:setAxisMode(i - 1, true)
    end
    for i = 4, 5 do
        simulation:getDevice().Axes[i].Minimum = 0
    end
    for i, name in ipairs { "A", "B", "X", "Y", "Back", "Start", "LeftShoulder", "RightShoulder" } do
        simulation:setButtonName(i - 1, name)
    end
    simulation:setOrientationName(0, "Rotation")
end

-- The simulated pad is there while nothing else is.
local function choose()
    if simulation and devices.NbDevices > 1 then
        simulation = nil
        collectgarbage()
    elseif devices.NbDevices == 0 then
        simulate()
    end
end

local function feed(time)
    simulation:rest()
    for i = 0, 5 do
        local wave = math.sin(time * (0.7 + 0.23 * i) + i)
        simulation:setAxisValue(i, i < 4 and wave or 0.5 + 0.5 * wave)
    end
    for i = 0, 7 do
        simulation:setButtonValue(i, math.floor(time * 2) % 8 == i and 1 or 0)
    end
    simulation:setOrientationValue(0, Quatf(Vec3f(0, 1, 0), 0.6 + 0.6 * math.sin(time)))
end

view:show()

return coroutine.create(function()
    local time = 0
    while true do
        choose()
        if simulation then
            feed(time)
        end
        if hasChanged() then
            showAll()
        end
        for _, update in ipairs(rows) do
            update()
        end
        time = time + coroutine.yield()
    end
end)
