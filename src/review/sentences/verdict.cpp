// Sentences about the verdict on an adjustment.
#include "review/sentence_table.h"

namespace brenu {

namespace {

constexpr SentenceEntry kSentences[] = {
    {BRENU_M0_TOO_LARGE,
     "m0-too-large",
     {"the standard error of unit weight of the {n1} is {v4.2} times the a-priori one, beyond "
      "chance ([pvv] {v2.1} exceeds {v3.1}, chi-square 95 %); look for gross errors, or correct "
      "the a-priori errors",
      "{n1}的单位权中误差为先验值的 {v4.2} 倍，超出偶然误差的范围（[pvv] {v2.1} 大于 {v3.1}，χ² 95%"
      "）；请查找粗差，或改正先验中误差"}},
    {BRENU_M0_SMALL,
     "m0-small",
     {"the standard error of unit weight of the {n1} is {v4.2} times the a-priori one, less than "
      "chance explains ([pvv] {v2.1} is below {v3.1}); the a-priori errors may be too large",
      "{n1}的单位权中误差为先验值的 {v4.2} 倍，小于偶然误差所能解释的程度（[pvv] {v2.1} 小于 {v3.1}"
      "）；先验中误差可能过大"}},
    {BRENU_NOTHING_REDUNDANT,
     "nothing-redundant",
     {"nothing is redundant in the {n1}, so no error would show; observe more than is needed",
      "{n1}没有多余观测，任何误差都不会显现；请增加多余观测"}},
    {BRENU_OBSERVATION_SUSPECT,
     "observation-suspect",
     {"the {k1} {1} - {2} does not fit: its test value is {v2.1}, the critical one {v3.2}; it "
      "would fit if it were {u14}; check it",
      "{k1} {1} - {2} 不符：检验值为 {v2.1}，临界值为 {v3.2}；若{u14} 则相符；请检查"}},
    {BRENU_MORE_SUSPECTS,
     "more-suspects",
     {"further observations beyond the critical value: {v1}, some of them because of the first; "
      "look at these when the first is settled",
      "另有 {v1} 个观测值超过临界值，其中一些由首个引起；请在解决首个之后再看"}},
    {BRENU_POINTS_NOT_CHECKED,
     "points-not-checked",
     {"nothing checks {points}: an error in its observations would not show; observe it once more "
      "from elsewhere",
      "没有检核：{points}；其观测值的误差不会显现；请从别处再观测一次"}},
    {BRENU_POINTS_WEAK,
     "points-weak",
     {"hardly anything checks {points}; observe it once more from elsewhere",
      "检核不足：{points}；请从别处再观测一次"}},
    {BRENU_CLOSURE_OF_HEIGHTS,
     "closure-of-heights",
     {"the closure {1} is off by {v1.1} mm, more than the {v2.1} mm of grade {v3}{?4 ; it meets "
      "grade {v4}}{?5 ; the statistics of the network are in order, so it is the grade, not a "
      "gross error}",
      "路线 {1} 的闭合差为 {v1.1} mm，超过等级 {v3} 的限差 {v2.1} mm{?4 ；满足等级 {v4}}{?5 ；全网"
      "统计检验正常，故是等级问题，而非粗差}"}},
    {BRENU_CLOSURE_OF_ANGLES,
     "closure-of-angles",
     {"the angles of {1} are off by {v1.1}\", more than the {v2.1}\" of grade {v3}{?4 ; they meet "
      "grade {v4}}{?5 ; the statistics of the network are in order, so it is the grade, not a "
      "gross error}",
      "{1} 的角度闭合差为 {v1.1}″，超过等级 {v3} 的限差 {v2.1}″{?4 ；满足等级 {v4}}{?5 ；全网统计检"
      "验正常，故是等级问题，而非粗差}"}},
    {BRENU_CLOSURE_OF_SIDES,
     "closure-of-sides",
     {"the traverse {1} is off by {v1.1} mm, more than the {v2.1} mm of grade {v3}{?4 ; it meets "
      "grade {v4}}{?5 ; the statistics of the network are in order, so it is the grade, not a "
      "gross error}",
      "导线 {1} 的闭合差为 {v1.1} mm，超过等级 {v3} 的限差 {v2.1} mm{?4 ；满足等级 {v4}}{?5 ；全网"
      "统计检验正常，故是等级问题，而非粗差}"}},
    {BRENU_MORE_CLOSURES,
     "more-closures",
     {"further closures beyond their limits: {v1}", "另有 {v1} 个闭合差超限"}},
    {BRENU_LARGE_BY_CHANCE,
     "large-by-chance",
     {"the {k1} {1} - {2} has the test value {v2.1}{?3  and {v3} more exceed 3.29}, which chance "
      "explains in a network of this size",
      "{k1} {1} - {2} 的检验值为 {v2.1}{?3 ，另有 {v3} 个超过 3.29}，就此网的规模而言属偶然"}},
    {BRENU_GROUP_VARIANCE,
     "group-variance",
     {"the residuals of the {p1} are {v2.2} times as large as their a-priori errors say; correct "
      "these if that is what the instrument is worth",
      "{p1}的改正数为先验中误差所示的 {v2.2} 倍；若仪器精度确为如此，请改正先验中误差"}},
    {BRENU_OBSERVATIONS_OUT,
     "observations-out",
     {"observations taken out by data snooping: {v1}; see the table",
      "粗差探测剔除观测值 {v1} 个；见表"}},
    {BRENU_LIKE_OTHER_FACE,
     "like-other-face",
     {"half a circle: read on the other face", "半个圆周：盘左盘右读反"}},
    {BRENU_LIKE_DEGREES, "like-degrees", {"a misreading of {v1} degrees", "读错 {v1} 度"}},
    {BRENU_LIKE_MINUTES, "like-minutes", {"a misreading of {v1} minutes", "读错 {v1} 分"}},
    {BRENU_LIKE_METRES, "like-metres", {"a misreading of {v1.g} m", "读错 {v1.g} m"}},
    {BRENU_LIKE_FEET, "like-feet", {"feet taken for metres", "误将英尺当作米"}},
    {BRENU_CLOSURES_EXPLAINED,
     "closures-explained",
     {"closures beyond their limits that run over observations taken out: {v1}",
      "经过被剔除观测值的超限闭合差：{v1} 个"}},
    {BRENU_NAME_NOT_GBK,
     "name-not-gbk",
     {"the prescribed reports are in code page 936 (GBK), in which the names of {points} come out "
      "as other characters; for these names use --report",
      "规定格式的报告为 GBK 编码（代码页 "
      "936），其中以下点名会显示为其他字符：{points}；此类点名请用 --report"}},
};
static_assert(AreAscending(kSentences));

}  // namespace

std::span<const SentenceEntry> SentencesOfVerdict() { return kSentences; }

}  // namespace brenu
