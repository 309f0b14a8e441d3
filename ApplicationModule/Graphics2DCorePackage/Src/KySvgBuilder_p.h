// SPDX-FileCopyrightText: 2026 The KyApplication authors
// SPDX-License-Identifier: MIT
#pragma once

#include "KySvgCascade_p.h"
#include "KySvgDocument_p.h"
#include "KySvgReports_p.h"
#include "KySvgStyle_p.h"

#include "KyURL.h"

#include <QImage>
#include <QTransform>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

class Ky2DGroup;
class Ky2DNode;
class Ky2DPath;
struct KySvgTextRun;

/// Makes the nodes of a document. What is still to be made lies on a stack of its own: the depth of a document, and of
/// what `use` makes of it, costs no stack of the thread.
class KySvgBuilder {
public:
    /// Nodes and bytes read beyond the document's own, at most.
    struct Limits {
        std::size_t nodes;
        std::size_t expansion;
    };

    KySvgBuilder(const KySvgDocument& document, KyURL base, KySvgReports& reports, const Limits& limits);

    /// The caller owns the group.
    Ky2DGroup* build();
    /// Size of the document, 0 where it gives none.
    const KySvgViewport& getSize() const { return mSize; }

private:
    friend struct KySvgElements;

    /// What a group hands down to its content.
    struct Context {
        KySvgStyle style;
        KySvgViewport viewport;
        unsigned depth = 0;
        /// The element that a `use` repeats here, -1 for none.
        int repeated = -1;
        std::shared_ptr<const Context> outer;
    };
    struct Task {
        int element = 0;
        Ky2DGroup* parent = nullptr;
        std::shared_ptr<const Context> context;
        /// The `use` that asks for it, -1 for none.
        int user = -1;
    };
    /// An element that is being made.
    struct State {
        const Task& task;
        const KySvgElement& element;
        KySvgStyle style;
        QTransform transform;
    };
    enum Axis { eAlongX, eAlongY, eAlongNone };

    void reportUnknown();
    void buildElement(const Task& task);
    bool isWithinLimits();

    Ky2DGroup* makeRoot();
    Ky2DGroup* makeGroup(const State& state);
    void buildGroup(const State& state);
    void buildSwitch(const State& state);
    void buildUse(const State& state);
    void buildSymbol(const State& state);
    void buildViewport(const State& state);
    void reportClip(const KySvgStyle& style, bool mayReachOut);
    void pushChildren(const State& state, Ky2DGroup* group, const KySvgViewport& viewport);
    bool isRepeating(const State& state, int target) const;

    void buildRect(const State& state);
    void buildCircle(const State& state);
    void buildEllipse(const State& state);
    void makeEllipse(const State& state, double rx, double ry);
    void buildLine(const State& state);
    void buildPolyline(const State& state);
    void buildPolygon(const State& state);
    void buildPoints(const State& state, bool isClosed);
    void buildPath(const State& state);
    void buildImage(const State& state);
    const QImage& findPicture(std::string_view link, const KyURL& url);
    QImage readPicture(std::string_view link, const KyURL& url);
    void buildText(const State& state);
    void makeText(const State& state, const KySvgTextRun& run, Ky2DGroup* parent, bool isAlone);

    /// Makes the node as last child of its group; null when the tree takes no more.
    template <class Node>
    Node* makeNode(const State& state);
    /// As makeNode, with the style of a shape.
    template <class Node>
    Node* makeShape(const State& state);
    bool enter(const State& state, Ky2DNode* node, bool isShown);

    double getLength(const State& state, std::string_view attribute, Axis axis, double missing = 0.0) const;
    std::optional<double> findLength(const State& state, const KySvgElement& element, std::string_view attribute,
                                     Axis axis) const;

    const KySvgDocument& mDocument;
    KyURL mBase;
    KySvgReports& mReports;
    std::size_t mMaxNodes;
    KySvgCascade mCascade;
    KySvgViewport mSize;
    std::vector<Task> mTasks;
    std::size_t mNbNodes = 0;
    /// By link; null where there is none.
    std::unordered_map<std::string_view, QImage> mPictures;
    std::int64_t mNbPixels = 0;
};

template <class Node>
Node* KySvgBuilder::makeNode(const State& state) {
    Node* node = Node::create();
    return enter(state, node, state.style.isDisplayed && state.style.isVisible) ? node : nullptr;
}
