-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- Settings that a script keeps: a colour, a number and a text, applied while they are changed and found again by the
-- next run. They stand in an INI file of their own, in the user's folder for configurations.

local folder = os.getenv("XDG_CONFIG_HOME") or os.getenv("APPDATA") or os.getenv("HOME") .. "/.config"
local file = QSettings(folder .. "/kyhost/settings-example.ini")

local defaults = { color = "#4fb3ff", speed = 12, title = "Knot" }
local settings = {}
for name, default in pairs(defaults) do
    -- What was read has the kind of the default, whatever somebody wrote into the file.
    settings[name] = file:value(name, default)
end

local knot = KyMeshNode()
knot:makeTorus(1, 0.4, 96)
knot:setPosition(0.9, 1.5, 0)
scene:addChild(knot)

local ground = KyMeshNode()
ground:makeGrid(24, 24)
ground:setColor("#3c4757")
scene:addChild(ground)

local lamp = KyLight()
lamp:lookAt(3, 6, 5, 0, 1, 0)
scene:addChild(lamp)
camera:lookAt(1.9, 2.8, 6, 0.4, 1.35, 0)

-- The title stands in the view, on a sheet without edges.
local sheet = KyQtPass.createQtPassOverlayView(view, true, false)
sheet.Area = Rectd(0.4, 0.04, 0.6, 0.14)
local title = Ky2DText()
title.Style.FontFamily, title.Style.FontSize, title.Style.FillColor = "sans-serif", 34, Color("#f4f8fc")
title.Style.TextAnchor, title.Style.TextVerticalAnchor = Ky2DStyle.eMiddle, Ky2DStyle.eCenter
sheet.MainPass:edit2DScene():insertChild(title, -1)
sheet.MainPass.ViewPosition, sheet.MainPass.ViewRectSize = Vec2d(0, 0), Vec2d(640, 80)
sheet.MainPass.KeepAspectRatio = true

local panel = KyQtPass.createQtPassOverlayView(view, true, true)
panel.Area = Rectd(0.03, 0.08, 0.37, 0.5)
local form = panel.MainPass
assert(form:loadForm("settings.ui"), "the form could not be read")

-- How each setting is applied, and the property of the widget of its name that shows it.
local apply = {
    color = function(color)
        knot:setColor(color)
    end,
    speed = function() end,
    title = function(text)
        title.Text = text
    end,
}
local property = { color = "currentText", speed = "value", title = "text" }

-- A colour may be half typed.
local function isValid(name, value)
    return name ~= "color" or value:match("^#%x%x%x%x%x%x$") ~= nil
end

for name, value in pairs(settings) do
    if not isValid(name, value) then
        settings[name] = defaults[name]
    end
    form:setWidgetProperty(name, property[name], settings[name])
    apply[name](settings[name])
end

local function follow()
    for name, value in pairs(settings) do
        local shown = form:getWidgetProperty(name, property[name])
        if shown ~= value and isValid(name, shown) then
            settings[name] = shown
            apply[name](shown)
            file:setValue(name, shown)
        end
    end
end

return coroutine.create(function()
    while true do
        local seconds = coroutine.yield()
        follow()
        knot:rotate(1, 0.3, 0, 2 * math.pi * settings.speed / 60 * seconds)
    end
end)
