-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- All in one view: a 3D scene to turn by hand, a form of widgets on a wall in it, QML above it that is bound to the
-- camera and to the exhibit, and a compass of 2D nodes. F1 lists the keys.

local function add(parent, color, shape, ...)
    local node = KyMeshNode()
    node[shape](node, ...)
    node:setColor(color)
    parent:addChild(node)
    return node
end

add(scene, "#3c4757", "makeGrid", 24, 24)
local stage = add(scene, "#2b3442", "makeCylinder", 1.15, 0.5, 96)
stage:setPosition(-1.2, 0.25, 0)
local exhibit = add(scene, "#e0a458", "makeTorus", 0.5, 0.2, 96)
exhibit.Name, exhibit.Roughness = "exhibit", 0.3
local lamp = KyLight()
lamp:lookAt(-2, 6, 6, 0, 0.8, 0)
scene:addChild(lamp)

camera:lookAt(-0.4, 2.5, 6.4, 0.1, 1.0, 0)
trackball.Center = Vec3d(0.1, 1.0, 0)

-- A form of widgets, on an upright plane. While a script runs, relative paths begin at its own folder.
local form = KyQtPass()
if not form:loadForm("panel.ui") then
    error(form:getError())
end
form:setWidgetProperty("reset", "visible", false)
local wall = add(scene, "#ffffff", "makePlane", 2.2, 2.35)
wall:setPosition(1.75, 1.5, -0.2)
wall:rotate(0, 1, 0, math.rad(-30))
wall:rotate(1, 0, 0, math.rad(90))
KyPassSurface.show(form, wall, view, 440, 470)

-- QML over the whole view, transparent but for its bar.
local bar = KyQmlPass.createQmlPassOverlayView(view, true, true).MainPass
bar:setContextObject("eye", camera)
bar:setContextObject("exhibit", exhibit)
bar:setQml("qml/dashboard.qml")

-- A compass of 2D nodes in a corner.
local corner = KyQtPass.createQtPassOverlayView(view, true, true)
corner.Area = Rectd(0.86, 0.03, 0.12, 0.21)
local compass = corner.MainPass:edit2DScene()
corner.MainPass.ViewRectSize = Vec2f(220, 220)

local function shape(parent, node, style)
    for name, value in pairs(style) do
        node.Style[name] = value
    end
    parent:insertChild(node, -1)
    return node
end

local disc = Ky2DEllipse()
disc.RX, disc.RY = 96, 96
shape(compass, disc, {
    FillColor = Color(0.08, 0.11, 0.16, 0.85), StrokeMode = Ky2DStyle.eSolidLine, StrokeWidth = 4,
    StrokeColor = Color("#3a4c63"),
})
local rose = Ky2DGroup()
compass:insertChild(rose, -1)
for i = 0, 3 do
    local hand = Ky2DPath()
    hand.PathData, hand.Rotation = "M-11 0L0 -64L11 0Z", 90 * i
    shape(rose, hand, { FillColor = Color(i == 0 and "#ff6b6b" or "#54677c") })
end
local north = Ky2DText()
north.Text, north.Y = "N", -80
shape(rose, north, {
    FontFamily = "sans-serif", FontSize = 15, FillColor = Color("#f4f8fc"), TextAnchor = Ky2DStyle.eMiddle,
    TextVerticalAnchor = Ky2DStyle.eCenter,
})

local makers = {
    [0] = function() exhibit:makeTorus(0.5, 0.2, 96) end,
    function() exhibit:makeSphere(0.65, 64) end,
    function() exhibit:makeBox(1, 1, 1) end,
    function() exhibit:makeCone(0.6, 1.2, 96) end,
    function() exhibit:makeCylinder(0.5, 1.1, 96) end,
}

local function toColor(hue)
    local function channel(n)
        local k = (n + hue / 60) % 6
        return 0.9 - 0.65 * math.max(0, math.min(k, 4 - k, 1))
    end
    return Color(channel(5), channel(3), channel(1))
end

local shown, hue
local function followForm(seconds)
    local function get(name, property)
        return form:getWidgetProperty(name, property or "value")
    end
    local kind, size = get("shape", "currentIndex"), get("size") / 65
    if kind ~= shown then
        shown = kind
        makers[kind]()
    end
    -- Only a new hue: the QML sets the color too.
    if hue and get("hue") ~= hue then
        exhibit.Color = toColor(get("hue"))
    end
    hue = get("hue")
    exhibit.Name = get("title", "text")
    exhibit:setScale(size, size, size)
    exhibit:setPosition(-1.2, 0.5 + 0.82 * size, 0)
    if get("spin", "checked") then
        exhibit:rotate(1, 0.4, 0.2, 0.03 * get("speed") * seconds)
    end
end

return coroutine.create(function()
    exhibit:rotate(1, 0, 0, 0.9)
    local seconds = 0
    while true do
        followForm(seconds)
        local forward = camera:getForward()
        local heading = math.deg(math.atan2(forward.x, -forward.z))
        if math.abs(heading + rose.Rotation) > 0.01 then
            rose.Rotation = -heading
        end
        seconds = coroutine.yield()
    end
end)
