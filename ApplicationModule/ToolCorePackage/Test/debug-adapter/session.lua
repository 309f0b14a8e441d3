-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT
local function describe(name, count)
    local text = name .. " x" .. count
    return text
end

local worker = coroutine.create(function(first)
    for i = first, 3 do
        coroutine.yield(describe("lamp", i))
    end
end)

local seen = {size = 0}
for _ = 1, 3 do
    local _, text = coroutine.resume(worker, 1)
    seen.size = seen.size + 1
    seen[seen.size] = text
end
print(table.concat(seen, ", "))
error("the end")
