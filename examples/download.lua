-- SPDX-FileCopyrightText: 2026 The KyApplication authors
-- SPDX-License-Identifier: MIT

-- A download and how far it is. Click the button to cancel it, and once more to begin again.
--
--     kyhost -e "url = 'https://example.org/big.zip'; directory = 'models'" examples/download.lua
--
-- Nothing is at the address below until you serve something there: python3 -m http.server 8765

local function getTemporaryFolder()
    local name = os.tmpname()
    os.remove(name)
    return os.getenv("TEMP") or name:match("^.*[/\\]") or "."
end

local cAddress = url or "http://localhost:8765/"
local cDirectory = directory or getTemporaryFolder()

local cPaper, cPanel, cTrack = Color("#0d1219"), Color("#151d28"), Color("#223041")
local cLabel, cText = Color("#7d8fa3"), Color("#dfe7ef")
local cBlue, cGreen, cRed = Color("#4fb3ff"), Color("#5fd38d"), Color("#ff6b6b")
local cLeft, cWidth = 40, 640

local scene = Ky2DScene()

local function add(node, style)
    for name, value in pairs(style) do
        node.Style[name] = value
    end
    scene:insertChild(node, -1)
    return node
end

local function rect(x, y, width, height, radius, color)
    local node = Ky2DRect()
    node.X, node.Y, node.Width, node.Height, node.RX = x, y, width, height, radius
    return add(node, { FillColor = color })
end

local function text(x, y, size, color, anchor)
    local node = Ky2DText()
    node.X, node.Y = x, y
    return add(node, {
        FontFamily = "sans-serif", FontSize = size, FillColor = color,
        TextAnchor = anchor or Ky2DStyle.eStart, TextVerticalAnchor = Ky2DStyle.eCenter,
    })
end

-- Long ones lose their middle.
local function shorten(words)
    return #words > 72 and words:sub(1, 34) .. " ... " .. words:sub(-33) or words
end

rect(0, 0, 720, 260, 18, cPanel)
local title = text(cLeft, 44, 22, cText)
local share = text(cLeft + cWidth, 44, 22, cText, Ky2DStyle.eEnd)
local address = text(cLeft, 80, 12, cLabel)
rect(cLeft, 108, cWidth, 18, 9, cTrack)
local bar = rect(cLeft, 108, 0, 18, 9, cBlue)
local amount = text(cLeft, 152, 14, cLabel)
local button = rect(cLeft, 188, 150, 42, 10, cTrack)
local caption = text(cLeft + 75, 209, 15, cText, Ky2DStyle.eMiddle)
address.Text = shorten(cAddress)

local function setBar(from, to)
    bar.X, bar.Width = cLeft + cWidth * from, cWidth * (to - from)
end

local function formatBytes(bytes)
    local units, i = { "bytes", "KB", "MB", "GB" }, 1
    while bytes >= 1000 and i < #units do
        bytes, i = bytes / 1000, i + 1
    end
    return (i == 1 and "%d %s" or "%.1f %s"):format(bytes, units[i])
end

local seconds = 0

local function showProgress()
    local received, total = network.Received, network.Total
    local speed = seconds > 0 and received / seconds or 0
    amount.Text = ("%s%s, %s a second"):format(formatBytes(received), total > 0 and " of " .. formatBytes(total) or "",
                                               formatBytes(speed))
    if total > 0 then
        share.Text = ("%d %%"):format(100 * received / total)
        setBar(0, received / total)
    else
        -- The server has not told how much there is to come.
        local middle = 0.5 + 0.4 * math.sin(2 * seconds)
        setBar(middle - 0.1, middle + 0.1)
    end
end

local function show(words, color, action)
    title.Text, bar.Style.FillColor, caption.Text = words, color, action
end

local function begin()
    seconds, share.Text, amount.Text = 0, "", ""
    setBar(0, 0)
    if network:download(cAddress, cDirectory) then
        show("Downloading", cBlue, "Cancel")
    else
        show("Another download is in progress", cRed, "Try again")
    end
end

connect(network, "downloadFinished", function(path, message)
    if message == "" then
        showProgress()
        setBar(0, 1)
        share.Text = "100 %"
        address.Text = shorten(path)
        show("Done", cGreen, "Once more")
    else
        setBar(0, 1)
        share.Text = ""
        amount.Text = shorten(message)
        show("Not downloaded", cRed, "Try again")
    end
    print(message == "" and path or message)
end)

local view = Ky2DView()
view.Caption, view.BackgroundColor = "Download", cPaper
view.Width, view.Height = 900, 400
view.Scene = scene

connect(view, "nodePicked", function(node)
    if node ~= button and node ~= caption then
        return
    elseif network.Downloading then
        network:cancel()
    else
        begin()
    end
end)

view:show()
view:fit()
begin()

return coroutine.create(function()
    while true do
        if network.Downloading then
            showProgress()
        end
        seconds = seconds + coroutine.yield()
    end
end)
