-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A walk through objects: create, read, write, methods, containers, components. Prints what it does;
-- try it also without a window: kyhost --no-window objects.lua

local function title(text) print("\n" .. text) end

title("Create")
-- Every class is a global that makes objects; createKyObject does it by the class's name.
local box = KyMeshNode()
local ball = createKyObject("KyMeshNode")
print(tostring(box), tostring(ball))
print("an unknown class gives", createKyObject("KyNonsense"))

title("Read and write attributes")
box.Name = "box"
box.Roughness = 0.3
ball.Name = "ball"
print(box.Name, "visible:", box.Visible, "roughness:", box.Roughness)
box.Roughness = 7
print("roughness is limited to 1:", box.Roughness)
box.Nonsense = 1
print("a name that is no attribute reads as", box.Nonsense)
local ok, message = pcall(function() box.Visible = {} end)
print("a value that does not fit is an error:", ok, message)

title("Call methods")
box:makeBox(1, 1, 1)
box:setColor("#d08a3c")
box:setPosition(-1.1, 0.5, 0)
ball:makeSphere(0.6)
ball:setColor(0.35, 0.55, 0.8)
ball:setPosition(1.1, 0.6, 0)
print("one method, several kinds of arguments: setColor by name and by numbers")

title("Containers count from 0")
scene:addChild(box)
scene.Children:insert(0, ball)
local children = scene.Children
for i = 0, #children - 1 do
    print(i, children[i].Name)
end
print("the same object, however it was reached:", children[0] == ball, scene:find("box") == box)
ok, message = pcall(function() return children[#children] end)
print("behind the last one:", message)
children:remove(0)
print("one is left:", #children, children[0].Name)
children:insert(#children, ball)

title("Components and constants")
print("the box stands in", box.Parent.Name, "- the scene in", scene.Parent)
local lamp = KyLight()
lamp.Name = "lamp"
lamp.Kind = KyLight.ePoint
lamp.Intensity = 1.1
lamp:setPosition(2, 4, 3)
scene:addChild(lamp)
print("kinds of light:", KyLight.eDirectional, KyLight.ePoint)

title("End")
local spare = KyNode()
local alias = spare
spare:destroy()
print("what was destroyed reads as", spare.Name, alias.Name)

local ground = KyMeshNode()
ground.Name = "ground"
ground:makeGrid(12, 12)
ground:setColor("#3c4757")
scene:addChild(ground)
camera:lookAt(2.0, 1.9, 4.0, 0, 0.45, 0)
