-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A live dashboard of 2D nodes. Coroutines change attributes; what is on the screen follows, once a frame.
-- Wheel and drag look closer, F shows all again, a click prints what is under the pointer.

local cPaper, cPanel, cLine, cFaint = Color("#0d1219"), Color("#151d28"), Color("#223041"), Color("#2b394a")
local cTick, cLabel, cText = Color("#54677c"), Color("#7d8fa3"), Color("#dfe7ef")
local cBlue, cGreen, cAmber, cRed = Color("#4fb3ff"), Color("#5fd38d"), Color("#ffb454"), Color("#ff6b6b")

local scene = Ky2DScene()

-- Every shape comes with a style of its own, filled black without outline.
local function add(parent, node, style)
    for name, value in pairs(style) do
        node.Style[name] = value
    end
    parent:insertChild(node, -1)
    return node
end

local function rect(parent, x, y, width, height, radius, style)
    local node = Ky2DRect()
    node.X, node.Y, node.Width, node.Height, node.RX = x, y, width, height, radius
    return add(parent, node, style)
end

local function text(parent, x, y, words, size, color, anchor)
    local node = Ky2DText()
    node.X, node.Y, node.Text = x, y, words
    return add(parent, node, {
        FontFamily = "sans-serif", FontSize = size, FillColor = color,
        TextAnchor = anchor or Ky2DStyle.eStart, TextVerticalAnchor = Ky2DStyle.eCenter,
    })
end

local function stroke(color, width)
    return {
        FillMode = Ky2DStyle.eNoBrush, StrokeMode = Ky2DStyle.eSolidLine, StrokeColor = color, StrokeWidth = width,
        StrokeCap = Ky2DStyle.eRoundCap, StrokeJoin = Ky2DStyle.eRoundJoin,
    }
end

local function path(parent, style, data)
    local node = Ky2DPath()
    node.PathData = data or ""
    return add(parent, node, style)
end

-- A panel is a group: what is in it lies where the panel lies.
local function panel(x, y, width, height, title)
    local group = Ky2DGroup()
    group.Name, group.Translation = title, Vec2d(x, y)
    scene:insertChild(group, -1)
    rect(group, 0, 0, width, height, 14, { FillColor = cPanel })
    text(group, 20, 26, title, 11, cLabel)
    return group
end

local function point(radius, angle)
    return radius * math.cos(math.rad(angle)), radius * math.sin(math.rad(angle))
end

local function arc(radius, from, to)
    local x1, y1 = point(radius, from)
    local x2, y2 = point(radius, to)
    return ("M%.3f %.3fA%g %g 0 %d 1 %.3f %.3f"):format(x1, y1, radius, radius, to - from > 180 and 1 or 0, x2, y2)
end

rect(scene, 0, 0, 1200, 675, 0, { FillColor = cPaper }).ZValue = -1
text(scene, 40, 44, "Pump station 4", 22, cText)
local clock = text(scene, 1160, 44, "", 16, cLabel, Ky2DStyle.eEnd)

-- A gauge: a faint arc, a bright one that follows the value, a needle that turns about the middle.
local function gauge(x, y, title, unit, highest, color)
    local group = panel(x, y, 350, 300, title)
    local dial = Ky2DGroup()
    dial.Translation = Vec2d(175, 170)
    group:insertChild(dial, -1)
    path(dial, stroke(cFaint, 14), arc(105, 135, 405))
    for tick = 0, 10 do
        local angle = 135 + 27 * tick
        local x1, y1 = point(84, angle)
        local x2, y2 = point(tick % 5 == 0 and 72 or 78, angle)
        path(dial, stroke(cTick, 2), ("M%f %fL%f %f"):format(x1, y1, x2, y2))
    end
    local value = path(dial, stroke(color, 14))
    local needle = path(dial, { FillColor = cText }, "M-6 0L0 -66L6 0A6 6 0 0 1 -6 0Z")
    local number = text(dial, 0, 58, "", 24, cText, Ky2DStyle.eMiddle)
    text(dial, 0, 88, unit, 10, cLabel, Ky2DStyle.eMiddle)
    return function(share)
        value.PathData = arc(105, 135, 135 + 270 * math.max(share, 0.002))
        needle.Rotation = -135 + 270 * share
        number.Text = ("%d"):format(share * highest + 0.5)
    end
end

local setSpeed = gauge(40, 80, "SPEED", "turns a minute", 3000, cBlue)
local setPressure = gauge(425, 80, "PRESSURE", "kilopascal", 800, cGreen)

-- Bars: the height of a rectangle, and its colour.
local bars = {}
local levels = panel(810, 80, 350, 300, "VIBRATION")
for i = 1, 16 do
    bars[i] = rect(levels, 20 + 20 * (i - 1), 270, 12, 0, 3, { FillColor = cGreen })
end

local function setBar(bar, share)
    bar.Height, bar.Y = 200 * share, 270 - 200 * share
    bar.Style.FillColor = share > 0.8 and cRed or share > 0.6 and cAmber or cGreen
end

-- A curve: one path, written anew as its values move on.
local curves = panel(40, 405, 735, 230, "FLOW")
for line = 0, 4 do
    path(curves, stroke(cLine, 1), ("M20 %dh695"):format(50 + 40 * line))
end
local area = path(curves, { FillColor = Color(0.31, 0.70, 1, 0.16) })
local curve = path(curves, stroke(cBlue, 2.5))
local values = {}
for i = 1, 140 do
    values[i] = 0.5 + 0.2 * math.sin(i / 9)
end

local function drawCurve()
    local points = {}
    for i, value in ipairs(values) do
        points[i] = ("%.1f %.1f"):format(20 + 5 * (i - 1), 210 - 160 * value)
    end
    local line = table.concat(points, "L")
    curve.PathData = "M" .. line
    area.PathData = "M20 210L" .. line .. "V210Z"
end

-- Lamps: an ellipse that breathes; the text beside it never changes and costs nothing.
local lamps = {}
local states = panel(810, 405, 350, 230, "STATE")
for i, words in ipairs { "Inlet valve", "Motor", "Outlet valve", "Bypass" } do
    local y = 60 + 42 * (i - 1)
    local lamp = Ky2DEllipse()
    lamp.Name, lamp.X, lamp.Y, lamp.RX, lamp.RY = words, 34, y, 8, 8
    lamps[i] = add(states, lamp, { FillColor = cGreen })
    text(states, 58, y, words, 14, cText)
end
lamps[4].Style.FillColor = cFaint

local view = Ky2DView()
view.Caption, view.BackgroundColor = "Dashboard", cPaper
view.Width, view.Height = 1200, 675
view.Scene = scene
view:show()
view:fit()

local function animate()
    local time = 0
    while true do
        setSpeed(0.62 + 0.25 * math.sin(0.9 * time) + 0.02 * math.sin(17 * time))
        setPressure(0.5 + 0.3 * math.sin(0.7 * time + 1))
        for i, bar in ipairs(bars) do
            setBar(bar, 0.5 + 0.4 * math.sin(2.1 * time + 0.55 * i) * math.cos(0.7 * time + i))
        end
        for i = 1, 3 do
            local fill = 0.75 + 0.25 * math.sin(3 * time + i)
            lamps[i].Style.FillColor = Color(0.37 * fill, 0.83 * fill, 0.55 * fill, 1)
        end
        clock.Text = os.date("%H:%M:%S")
        time = time + coroutine.yield()
    end
end

-- Thirty values a second, however many frames there are.
local function record()
    local due, phase = 0, 0
    while true do
        due = due + coroutine.yield()
        while due > 0 do
            due, phase = due - 1 / 30, phase + 1 / 30
            table.remove(values, 1)
            values[#values + 1] = 0.5 + 0.28 * math.sin(1.7 * phase) * math.cos(0.6 * phase) + 0.03 * math.random()
        end
        drawCurve()
    end
end

local function tellClicks()
    local last
    while true do
        local picked = view.PickedNode
        if picked ~= last then
            last = picked
            print(picked and ("picked %s %s"):format(tostring(picked), picked.Name) or "picked nothing")
        end
        coroutine.yield()
    end
end

return coroutine.create(animate), coroutine.create(record), coroutine.create(tellClicks)
