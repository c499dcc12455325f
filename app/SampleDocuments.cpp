#include "app/SampleData.h"

namespace tessaly {

namespace {

constexpr int none = -1;

struct Pair
{
    const char16_t *chinese;
    const char16_t *english;
};

constexpr Pair categoryNames[] = {
    {u"课程讲义", u"Lecture notes"},
    {u"读书笔记", u"Reading notes"},
    {u"写作", u"Writing"},
};

struct Document
{
    /// Index into the categories.
    int category;
    Pair title;
    /// What follows the heading; null for nothing.
    Pair body;
};

constexpr Pair elasticity{uR"(**需求的价格弹性**比较两个相对变化，没有单位，
因此可以在不同规模的市场之间比较。

## 定义

对需求函数 $Q(P)$，某一点的弹性为

$$\varepsilon = \frac{dQ}{dP}\cdot\frac{P}{Q}$$

> 弹性小于 -1 时，称需求富有弹性。

| 商品     | 弹性 | 含义     |
| -------- | ---- | -------- |
| 食盐     | -0.1 | 缺乏弹性 |
| 火车出行 | -0.9 | 接近单位 |
| 餐馆用餐 | -1.6 | 富有弹性 |

## 小练习

```python
def elasticity(q0, q1, p0, p1):
    """中点公式。"""
    dq = (q1 - q0) / ((q1 + q0) / 2)
    dp = (p1 - p0) / ((p1 + p0) / 2)
    return dq / dp
```

- [x] 完成习题
- [ ] 画出线性情形
)",
                          uR"(The **price elasticity of demand** compares two relative changes.
It has no unit, so markets of any size can be compared.

## Definition

For a demand function $Q(P)$, elasticity at a point is

$$\varepsilon = \frac{dQ}{dP}\cdot\frac{P}{Q}$$

> A value below -1 means that demand is elastic.

| Good        | Elasticity | Reading   |
| ----------- | ---------- | --------- |
| Salt        | -0.1       | inelastic |
| Train rides | -0.9       | near unit |
| Restaurants | -1.6       | elastic   |

## A small check

```python
def elasticity(q0, q1, p0, p1):
    """Midpoint formula."""
    dq = (q1 - q0) / ((q1 + q0) / 2)
    dp = (p1 - p0) / ((p1 + p0) / 2)
    return dq / dp
```

- [x] Work through the worksheet
- [ ] Draw the linear case
)"};

/// Newest first.
constexpr Document documents[] = {
    {0, {u"第2讲 需求与弹性", u"Lecture 2: demand and elasticity"}, elasticity},
    {none, {u"九月计划", u"Plan for September"}, {u"- 交稿\n- 跑步 80 公里\n", u"- Hand in the draft\n- Run 80 km\n"}},
    {0, {u"第1讲 供给与需求", u"Lecture 1: supply and demand"}, {nullptr, nullptr}},
    {none, {u"会议速记", u"Meeting notes"}, {nullptr, nullptr}},
    {0, {u"课程大纲", u"Syllabus"}, {nullptr, nullptr}},
    {1, {u"《国富论》摘记", u"Notes on The Wealth of Nations"}, {nullptr, nullptr}},
};

} // namespace

SampleDocuments sampleDocuments(AppLanguage language, Instant now)
{
    constexpr double sixHours = 6 * 3600;
    const auto text = [language](Pair pair) {
        return QString::fromUtf16(language == AppLanguage::English ? pair.english : pair.chinese);
    };
    SampleDocuments sample;
    for (const Pair &name : categoryNames)
        sample.library.categories.append({.name = text(name)});
    double age = 0;
    for (const Document &document : documents) {
        age += sixHours;
        MarkdownDocument record{.title = text(document.title), .updatedAt = now.plus(-age)};
        if (document.category != none)
            record.categoryID = sample.library.categories.at(document.category).id;
        QString content = QStringLiteral("# ") + record.title + u'\n';
        if (document.body.english)
            content += u'\n' + text(document.body);
        sample.texts.insert(record.id, content);
        sample.library.documents.append(record);
    }
    return sample;
}

} // namespace tessaly
