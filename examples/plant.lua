-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A drawing brought to life: its elements are 2D nodes, found by their id, moved and restyled by coroutines.

local importer = Ky2DSvgImporter()
local drawing = importer:importFile("plant.svg")
if not drawing then
    error(importer:getError())
end

local scene = Ky2DScene()
scene:insertChild(drawing, -1)

local view = Ky2DView()
view.Caption, view.BackgroundColor = "Plant", Color("#f7f9fb")
view.Width, view.Height = 900, 520
view.Scene = scene
view:show()
view:fit()

local rotor, needle, flow = drawing:find("rotor"), drawing:find("needle"), drawing:find("flow")
local level = drawing:find("tank-level")

-- A node turns about the origin of the group that it is in: the middle of the pump.
local function turnRotor()
    while true do
        rotor:rotate(200 * coroutine.yield())
    end
end

-- What moves in a pipe is the offset of its dashes, counted in line widths.
local function pump()
    local offset = 0
    while true do
        offset = offset - 8 * coroutine.yield()
        for i = 0, flow:getNbChildren() - 1 do
            flow:getChild(i).Style.StrokeDashOffset = offset
        end
    end
end

local function measure()
    local time = 0
    while true do
        time = time + coroutine.yield()
        needle.Rotation = 95 * math.sin(1.3 * time)
        level.Style.FillColor = Color(0.31, 0.70, 1, 0.55 + 0.25 * math.sin(2 * time))
    end
end

return coroutine.create(turnRotor), coroutine.create(pump), coroutine.create(measure)
