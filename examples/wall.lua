-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A form of widgets on a wall of the 3D scene: click, drag, type and turn the wheel on it from any point of view.
-- Beside the form the mouse turns the camera. The sign at the foot of the table is a 2D scene, on a node as well.

local function add(parent, color, shape, ...)
    local node = KyMeshNode()
    node[shape](node, ...)
    node:setColor(color)
    parent:addChild(node)
    return node
end

-- An upright plane of this size that shows a pass, its picture as many pixels wide.
local function addScreen(parent, pass, width, height, pixels)
    local plane = add(parent, "#ffffff", "makePlane", width, height)
    plane:rotate(1, 0, 0, math.rad(90))
    KyPassSurface.show(pass, plane, view, pixels, math.floor(pixels * height / width + 0.5))
    return plane
end

add(scene, "#3c4757", "makeGrid", 24, 24)

local wall = KyNode()
wall:setPosition(1.45, 0, -0.3)
wall:rotate(0, 1, 0, math.rad(-32))
scene:addChild(wall)
local slab = add(wall, "#2f3a4a", "makeBox", 2.66, 3.0, 0.14)
slab:setPosition(0, 1.5, 0)
slab.Roughness = 0.6

-- While a script runs, relative paths begin at its own folder.
local panel = KyQtPass()
if not panel:loadForm("panel.ui") then
    error(panel:getError())
end
addScreen(wall, panel, 2.44, 2.606, 440):setPosition(0, 1.58, 0.075)

local stage = add(scene, "#2b3442", "makeCylinder", 1.15, 0.5, 96)
stage:setPosition(-1.75, 0.25, 0)
stage.Roughness = 0.35
local exhibit = add(scene, "#ffffff", "makeTorus", 0.5, 0.2, 96)
exhibit.Roughness = 0.3

-- The sign: a 2D scene of a rounded plate and a text.
local drawing = Ky2DScene()
local plate, words = Ky2DRect(), Ky2DText()
plate.X, plate.Y, plate.Width, plate.Height, plate.RX = -250, -50, 500, 100, 24
plate.Style.FillColor = Color("#151d29")
plate.Style.StrokeMode, plate.Style.StrokeColor, plate.Style.StrokeWidth = Ky2DStyle.eSolidLine, Color("#5cc8ff"), 3
words.Style.FontFamily, words.Style.FontSize, words.Style.FillColor = "sans-serif", 40, Color("#f4f8fc")
words.Style.TextAnchor, words.Style.TextVerticalAnchor = Ky2DStyle.eMiddle, Ky2DStyle.eCenter
drawing:insertChild(plate, -1)
drawing:insertChild(words, -1)
local sign = KyQtPass()
sign:set2DScene(drawing, true)
sign.ViewRectSize = Vec2f(512, 112)
local stand = addScreen(scene, sign, 1.5, 0.328, 512)
stand:rotate(1, 0, 0, math.rad(-28))
stand:setPosition(-1.75, 0.16, 1.4)

local lamp = KyLight()
lamp:lookAt(-2, 6, 6, 0, 0.8, 0)
scene:addChild(lamp)

camera:lookAt(-0.7, 2.3, 5.6, -0.1, 1.3, 0)
trackball.Center = Vec3d(-0.1, 1.3, 0)

local function toColor(hue)
    local function channel(n)
        local k = (n + hue / 60) % 6
        return 0.9 - 0.65 * math.max(0, math.min(k, 4 - k, 1))
    end
    return Color(channel(5), channel(3), channel(1))
end

local makers = {
    [0] = function() exhibit:makeTorus(0.5, 0.2, 96) end,
    function() exhibit:makeSphere(0.65, 64) end,
    function() exhibit:makeBox(1, 1, 1) end,
    function() exhibit:makeCone(0.6, 1.2, 96) end,
    function() exhibit:makeCylinder(0.5, 1.1, 96) end,
}

local first = {
    title = { "text" }, shape = { "currentIndex" }, speed = { "value" }, size = { "value" }, hue = { "value" },
    spin = { "checked" },
}
for name, entry in pairs(first) do
    entry.value = panel:getWidgetProperty(name, entry[1])
end

local function reset()
    for name, entry in pairs(first) do
        panel:setWidgetProperty(name, entry[1], entry.value)
    end
    panel:setWidgetProperty("reset", "checked", false)
end

local shown
local function apply(seconds)
    local function get(name, property)
        return panel:getWidgetProperty(name, property or "value")
    end
    if get("reset", "checked") then
        reset()
    end
    local shape, size = get("shape", "currentIndex"), get("size") / 65
    if shape ~= shown then
        shown = shape
        makers[shape]()
    end
    exhibit.Color = toColor(get("hue"))
    exhibit:setScale(size, size, size)
    exhibit:setPosition(-1.75, 0.5 + 0.82 * size, 0)
    if get("spin", "checked") then
        exhibit:rotate(1, 0.4, 0.2, 0.03 * get("speed") * seconds)
    end
    words.Text = get("title", "text")
end

return coroutine.create(function()
    exhibit:rotate(1, 0, 0, 0.9)
    local seconds = 0
    while true do
        apply(seconds)
        seconds = coroutine.yield()
    end
end)
