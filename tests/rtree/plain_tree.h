// A second tree by the same rules, written down step by step with no thought of speed.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <memory>
#include <vector>

#include "calcora/ICRTree.h"

namespace plain {

inline RTreeRect combine(const RTreeRect& a, const RTreeRect& b)
{
    return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX),
            std::max(a.maxY, b.maxY)};
}

inline double volume(const RTreeRect& r)
{
    const double x = (r.maxX - r.minX) * 0.5;
    const double y = (r.maxY - r.minY) * 0.5;
    const double radius = std::sqrt(x * x + y * y);
    return radius * radius * 3.141593;
}

inline bool overlap(const RTreeRect& q, const RTreeRect& r)
{
    return !(q.minX > r.maxX || r.minX > q.maxX || q.minY > r.maxY || r.minY > q.maxY);
}

inline bool inside(const RTreeRect& q, const RTreeRect& r)
{
    return !(q.minX > r.minX || r.maxX > q.maxX || q.minY > r.minY || r.maxY > q.maxY);
}

struct Node;
struct Branch {
    RTreeRect rect;
    std::shared_ptr<Node> node;
    void* id = nullptr;
    bool used() const { return node || id; }
};
inline bool isUsed(const Branch& b)
{
    return b.used();
}
struct Node {
    int level = 0;
    std::array<Branch, 9> branch;
    auto count() const { return std::count_if(branch.begin(), branch.end(), isUsed); }
    RTreeRect cover() const
    {
        RTreeRect all;
        bool first = true;
        for (const Branch& b : branch) {
            if (!b.used()) continue;
            all = first ? b.rect : combine(all, b.rect);
            first = false;
        }
        return all;
    }
};
using NodePtr = std::shared_ptr<Node>;

class Tree {
public:
    using Accept = std::function<bool(const RTreeRect&)>;
    using Match = std::function<bool(const Branch&)>;

    bool insert(const RTreeRect& rect, void* id) { return put({rect, nullptr, id}, 0); }

    /// Removes the first leaf slot that matches, below slots that are accepted; its id, or null.
    void* remove(const Accept& accept, const Match& match)
    {
        std::vector<NodePtr> dissolved;
        void* id = removeBelow(*root, accept, match, dissolved);
        if (!id) return nullptr;
        for (auto n = dissolved.rbegin(); n != dissolved.rend(); ++n)
            for (const Branch& b : (*n)->branch)
                if (b.used()) put(b, (*n)->level);
        if (root->level > 0 && root->count() == 1)
            root = NodePtr(std::find_if(root->branch.begin(), root->branch.end(), isUsed)->node);
        return id;
    }

    /// Leaf slots that match, below slots that are accepted; of each leaf only the first, if asked.
    void search(const Node& n, const Accept& accept, const Match& match, bool firstOnly,
                std::vector<void*>& hits) const
    {
        for (const Branch& b : n.branch) {
            if (!b.used()) continue;
            if (n.level > 0 && accept(b.rect)) search(*b.node, accept, match, firstOnly, hits);
            if (n.level > 0 || !match(b)) continue;
            hits.push_back(b.id);
            if (firstOnly) return;
        }
    }

    NodePtr root = std::make_shared<Node>();

private:
    bool put(const Branch& b, int level)
    {
        const NodePtr sibling = putBelow(*root, b, level);
        if (!sibling) return false;
        auto grown = std::make_shared<Node>();
        grown->level = root->level + 1;
        add(*grown, {root->cover(), root});
        add(*grown, {sibling->cover(), sibling});
        root = grown;
        return true;
    }

    NodePtr putBelow(Node& n, const Branch& b, int level)
    {
        if (n.level == level) return add(n, b);
        Branch& way = n.branch[pick(n, b.rect)];
        const NodePtr sibling = putBelow(*way.node, b, level);
        if (!sibling) {
            way.rect = combine(b.rect, way.rect);
            return nullptr;
        }
        way.rect = way.node->cover();
        return add(n, {sibling->cover(), sibling});
    }

    static std::size_t pick(const Node& n, const RTreeRect& rect)
    {
        std::size_t best = 9;
        double least[2] = {0, 0};
        for (std::size_t i = 0; i < 9; ++i) {
            if (!n.branch[i].used()) continue;
            const double area = volume(n.branch[i].rect);
            const double increase = volume(combine(rect, n.branch[i].rect)) - area;
            if (best < 9 && !(increase < least[0] || (increase == least[0] && area < least[1])))
                continue;
            best = i, least[0] = increase, least[1] = area;
        }
        return best;
    }

    static NodePtr add(Node& n, const Branch& b)
    {
        const auto slot = std::find_if_not(n.branch.begin(), n.branch.end(), isUsed);
        if (slot == n.branch.end()) return split(n, b);
        *slot = b;
        return nullptr;
    }

    static NodePtr split(Node& n, const Branch& extra)
    {
        std::vector<Branch> buffer(n.branch.begin(), n.branch.end());
        buffer.push_back(extra);
        n.branch = {};
        int group[10], count[2] = {0, 0};
        std::fill(group, group + 10, -1);
        RTreeRect cover[2];
        const auto classify = [&](std::size_t i, int g) {
            group[i] = g;
            cover[g] = count[g]++ == 0 ? buffer[i].rect : combine(buffer[i].rect, cover[g]);
        };
        const auto [first, second] = mostWasteful(buffer);
        classify(first, 0);
        classify(second, 1);
        while (count[0] + count[1] < 10 && count[0] < 6 && count[1] < 6) {
            double biggest = -1;
            std::size_t chosen = 10;
            int chosenGroup = 0;
            for (std::size_t i = 0; i < 10; ++i) {
                if (group[i] >= 0) continue;
                const auto growth = [&](const RTreeRect& all) {
                    return volume(combine(buffer[i].rect, all)) - volume(all);
                };
                double diff = growth(cover[1]) - growth(cover[0]);
                const int g = diff >= 0 ? 0 : 1;
                if (g == 1) diff = -diff;
                const bool bigger = diff > biggest;
                const bool tie = std::abs(diff - biggest) < 1e-6 && count[g] < count[chosenGroup];
                if (bigger) biggest = diff;
                if (chosen < 10 && !bigger && !tie) continue;
                chosen = i;
                chosenGroup = g;
            }
            classify(chosen, chosenGroup);
        }
        auto sibling = std::make_shared<Node>();
        sibling->level = n.level;
        const int rest = count[0] >= 6 ? 1 : 0;
        for (std::size_t i = 0; i < 10; ++i)
            add((group[i] < 0 ? rest : group[i]) == 0 ? n : *sibling, buffer[i]);
        return sibling;
    }

    /// The two that would waste most in one node.
    static std::pair<std::size_t, std::size_t> mostWasteful(const std::vector<Branch>& buffer)
    {
        RTreeRect all = buffer[0].rect;
        for (const Branch& b : buffer) all = combine(all, b.rect);
        double worst = -volume(all) - 1;
        std::pair<std::size_t, std::size_t> result{0, 1};
        for (std::size_t a = 0; a < 9; ++a)
            for (std::size_t b = a + 1; b < 10; ++b) {
                const RTreeRect &r = buffer[a].rect, &s = buffer[b].rect;
                const double waste = volume(combine(r, s)) - volume(r) - volume(s);
                if (waste > worst) worst = waste, result = {a, b};
            }
        return result;
    }

    void* removeBelow(Node& n, const Accept& accept, const Match& match,
                      std::vector<NodePtr>& dissolved)
    {
        for (Branch& b : n.branch) {
            if (!b.used()) continue;
            if (n.level == 0) {
                if (!match(b)) continue;
                void* id = b.id;
                b = {};
                return id;
            }
            if (!accept(b.rect)) continue;
            void* id = removeBelow(*b.node, accept, match, dissolved);
            if (!id) continue;
            if (b.node->count() >= 4) {
                b.rect = b.node->cover();
            } else {
                dissolved.push_back(b.node);
                b = {};
            }
            return id;
        }
        return nullptr;
    }
};

}  // namespace plain
