-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A walk through the values that scripts compute with: vectors, rays, rotations, colours, URLs, dates, boxes.
-- Prints what it does; try it also without a window: kyhost --no-window values.lua

local function title(text) print("\n" .. text) end

title("Vectors")
local a, b = Vec3(1, 2, 3), Vec3(4, 5, 6)
print("sum:", a + b, "difference:", b - a, "scaled:", 2 * a, a / 2)
print("dot:", a:dot(b), "cross:", a:cross(b), "length:", Vec3(2, 3, 6):length())
local direction = Vec3(0, 3, 4)
print("normalized:", direction:normalize(), direction, "a null vector stays:", Vec3():normalize())
print("d, f and i are the element types:", Vec3d(0.1, 1, 2), Vec3f(0.1, 1, 2), Vec3i(0.1, 1, 2))
print("a class equals only itself:", Vec3d(1, 2, 3) == Vec3(1, 2, 3), Vec3d(1, 2, 3) == Vec3f(1, 2, 3))
local corner = Vec2(3, 4)
corner.x = -corner.x
print("components are read and written:", corner, corner.x, Vec2i(corner):isNull())
local ok, message = pcall(function() return a + 1 end)
print("what does not fit is an error:", ok, (message:gsub("\n.*", "")))
print("a value joins a text: " .. a)

title("Rays, way points, intersections")
local ray = Ray(Vec3(0, 0, 5), Vec3(0, 0, -1))
ray.origin.x = 7
print("a part changes its whole:", ray.origin, ray)
local origin = ray.origin
ray = nil
collectgarbage()
print("and outlives it:", origin)
local stop = WayPoint(Vec3(1, 0, 0), 2.5)
stop.cubicVelocity = Vec3(0, 1, 0)
print("way point:", stop.position, "after", stop.time, "s, velocity", stop.cubicVelocity)
local hit = IntersectionPoint()
hit.position, hit.distance = Vec3(0, 0, 1), 4
print("intersection:", hit.position, "distance", hit.distance)

title("Easing")
local columns = {}
for i = 0, 10 do columns[#columns + 1] = ("%.2f"):format(Easing.compute(Easing.CubicInOut, i / 10)) end
print("CubicInOut:", table.concat(columns, " "))
print("BackIn goes back first:", ("%.3f"):format(Easing.compute(Easing.BackIn, 0.4)))

title("Rotations and matrices")
local quarter = Quat(Vec3(0, 0, 1), math.pi / 2)
local turned = quarter:rotate(Vec3(1, 0, 0))
print(("a quarter turns x to y: %.3f %.3f %.3f"):format(turned.x, turned.y, turned.z))
print("half of it:", ("%.4f"):format(Quat():slerp(quarter, 0.5):angle()), "the way back:", quarter:getInverse())
local frame = Matrix(Quat(), Vec3(5, 6, 7))
frame:set(0, 0, 2)
print("a matrix moves points:", frame * Vec3(1, 1, 1), "its element 0, 3:", frame:get(0, 3))
print("inverted:", frame:invert(), frame:translation(), "determinant:", frame:determinant())
ok, message = pcall(function() return frame:get(4, 0) end)
print("indices are checked:", message)

title("Colours")
local orange = Color(Color.eOrange)
print(orange, orange:getHtmlName(), Color("#87ceeb"):getHtmlName())
print("darker:", (orange * Color(0.5, 0.5, 0.5)):getHtmlName(), "packed:", orange:toR8G8B8A8())
local wheel = {}
for i = 0, 5 do wheel[#wheel + 1] = Color(i / 6, 1, 1):HSV2RGB():getHtmlName() end
print("once around the wheel:", table.concat(wheel, " "))

title("URLs")
local url = URL("http://example.org:8080/a/b/../c d.txt?q#top")
url:setCanonicalPath()
print(url, "host", url.host, "port", url.port)
print("file:", url.filename, "extension:", url.extension, "directory:", url:getDirectory())
print("relative to another:", url:getRelativeURL(URL("http://example.org:8080/a/x/")))
print("a path on this machine:", URL("textures/wood floor.png", URL.eLocalPath))

title("Lists of integers")
local list = IntVector({3, 1, 4})
list:push_back(1)
list:set(0, 9)
print(list, "size", list:size(), "the first", list:get(0))

title("Dates, times, timers")
local day, noon = Date(2024, 2, 29), Time(12, 0, 0)
print(day, noon, DateTime(day, noon))
print("a day that does not exist:", Date(2023, 2, 29) == Date())
print("from noon to one:", Time(13, 0, 0) - noon, "seconds")
print("earlier:", DateTime(day, noon) < DateTime(Date(2024, 3, 1), Time(0)))
local timer = Timer()
timer:start()
print("a timer runs:", timer:getPreciseElapsedTime() >= 0, timer:getCurrentUS() > 0)

title("Boxes, rectangles, planes, volumes")
local rect = Rect(10, 20, 30, 40)
rect.origin.x = 0
print(rect, "width", rect.width, "centre", rect:getCenter(), "area", rect:getArea())
local volume = Volume(Vec3(0, 0, 0), Vec3(2, 4, 6))
print(volume, "size", volume:getSize(), "volume", volume:getVolume())
print("contains its centre:", volume:contains(volume:getCenter()), "a point outside:", volume:contains(Vec3(3, 0, 0)))
local box = Box(Vec3(1, 0, 0), quarter, Vec3(2, 2, 2))
print("a turned box:", box:getCenter(), "its volume:", ("%.3f"):format(box:getVolume()), "axis", Box.eZ)
local ground = Plane(Vec3(0, 1, 0), 0)
print("where a ray meets it:", ground:intersectsRay(Ray(Vec3(1, 5, 1), Vec3(0, -1, 0))))
print("height above the ground:", ground:getDistanceTo(Vec3(3, 2, 1)), "its foot:", ground:projectPoint(Vec3(3, 2, 1)))

title("The other element types")
-- Every class in its variants: made from the same numbers, each keeps what its element type can hold.
local function variants(text, letters, make)
    for letter in letters:gmatch(".") do
        local function class(name) return _G[name .. letter] end
        print(text .. letter .. ":", make(class("Vec3"), class("Vec2"), class))
    end
end
variants("Vec2", "idf", function(_, Vec) return Vec(1.5, 2.5) + Vec(1, 1) end)
variants("Vec3", "idf", function(Vec) return Vec(1.5, 0.1, 2) * 2, Vec(3, 4, 0):length() end)
variants("Ray", "df", function(Vec, _, class) return class("Ray")(Vec(0, 0, 5), Vec(0, 0, -1)) end)
variants("WayPoint", "df", function(Vec, _, class) return class("WayPoint")(Vec(1, 0, 0), 0.1) end)
variants("IntersectionPoint", "df", function(_, _, class)
    local point = class("IntersectionPoint")()
    point.distance = 0.1
    return point, point.distance
end)
variants("Quat", "df", function(Vec, _, class) return class("Quat")(Vec(0, 0, 1), math.pi):rotate(Vec(1, 0, 0)).x end)
variants("Matrix", "df", function(Vec, _, class)
    return class("Matrix")(class("Quat")(), Vec(1, 2, 3)) * Vec(1, 1, 1)
end)
variants("Plane", "idf", function(Vec, _, class)
    return class("Plane")(Vec(0, 1, 0), 2.5), class("Plane")(Vec(0, 1, 0), 2.5):intersectsPlane(class("Plane")())
end)
variants("Rect", "idf", function(_, _, class)
    return class("Rect")(0, 0, 2.5, 2.5):getIntersects(class("Rect")(1, 1, 5, 5))
end)
variants("Box", "df", function(Vec, _, class) return class("Box")(Vec(0, 0, 0), Vec(2.5, 2, 2)):getSize() end)
variants("Volume", "idf", function(Vec, _, class)
    local volume = class("Volume")(Vec(0, 0, 0), Vec(2.5, 2, 2))
    return volume, volume:getVolume(), volume:getIntersects(class("Volume")())
end)

title("Types, resources, the system")
local kind = Type.of(scene)
print("the scene is a", kind:getName(), "with the parent", kind:getParent():getName(), kind:isA(kind))
-- A sandbox has no files.
if ResourceInformation then
    local information = ResourceInformation(URL("nowhere/at all.txt", URL.eLocalPath))
    print("a file that is not there:", information:isReadable(), Resource.existFile("nowhere/at all.txt"))
end
print("this system:", Platform.getOsType() == Platform.eLinux and "Linux" or "Windows")

title("Bits")
print(bit_and(orange:toR8G8B8A8(), 255), bit_or(12, 10), bit_xor(12, 10), bit_not(0))

title("Put together")
-- A ring of balls: turned by a quaternion, raised by an easing curve, coloured around the wheel.
local nbBalls = 12
for i = 0, nbBalls - 1 do
    local turn = Quat(Vec3(0, 1, 0), 2 * math.pi * i / nbBalls)
    local height = 1.2 * Easing.compute(Easing.SineInOut, i / (nbBalls - 1))
    local place = turn:rotate(Vec3(1.6, 0, 0)) + Vec3(0, height, 0)
    local ball = KyMeshNode()
    ball:makeSphere(0.3)
    ball.Color = Color(i / nbBalls, 0.6, 0.9):HSV2RGB()
    ball.Position = place
    scene:addChild(ball)
end
print(#scene.Children, "balls stand in a ring, the last one at", scene.Children[nbBalls - 1].Position)
local copy = scene.Children[0].Position
copy.y = 9
print("values from attributes are copies, to be written back:", scene.Children[0].Position)
scene.Children[0].Position = copy / 4
print("written back:", scene.Children[0].Position)
camera:lookAt(2.5, 2.6, 4.2, 0, 0.6, 0)
