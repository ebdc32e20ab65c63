// Sentences about computations, and what they leave out.
#include "review/sentence_table.h"

namespace brenu {

namespace {

constexpr SentenceEntry kSentences[] = {
    {BRENU_NOTHING_LEVELLED,
     "nothing-levelled",
     {"bench marks are there but no levelled height difference; give each height difference the "
      "length of its line",
      "有已知高程点而没有水准高差；请给每个高差配上路线长度"}},
    {BRENU_HEIGHTS_UNREACHED,
     "heights-unreached",
     {"heights cannot be computed for {points}; connect them with a bench mark by height "
      "differences that have a line length{?1 , or adjust heights and plane as two jobs: with "
      "control points of both kinds every point needs both}",
      "无法计算高程：{points}；请用带路线长度的高差将其与已知高程点联测{?1 ，或将高程与平面分作两个"
      "作业平差：两类已知点并存时，每个点都须同时有高程和平面}"}},
    {BRENU_DISTANCES_WITHOUT_DIRECTIONS,
     "distances-without-directions",
     {"there are distances but no directions to place points by; add directions, or adjust the "
      "distances alone with format 3",
      "有边长而没有方向，无法推算点位；请补充方向，或用格式 3 只对边长平差"}},
    {BRENU_COORDINATES_UNREACHED,
     "coordinates-unreached",
     {"approximate coordinates cannot be computed for {points}; observe each with direction and "
      "distance, or by intersection, from oriented known stations{?1 , or adjust heights and "
      "plane as two jobs: with control points of both kinds every point needs both}",
      "无法计算近似坐标：{points}；请从已定向的已知测站以方向和边长或交会法观测各点{?1 ，或将高程与"
      "平面分作两个作业平差：两类已知点并存时，每个点都须同时有高程和平面}"}},
    {BRENU_NAME_WITHOUT_POINT,
     "name-without-point",
     {"an end of the line {1} - {2} is no point; rename the observation or add the point",
      "{1} - {2} 的一端不是点；请改正观测值的点名或补充该点"}},
    {BRENU_HEIGHTS_SINGULAR,
     "heights-singular",
     {"the normal equations of the levelling network are singular; look for points that its "
      "observations do not determine, and for a-priori errors that leave them no weight",
      "高程网法方程奇异；请查找观测值不能确定的点，以及使观测值失去权的先验中误差"}},
    {BRENU_PLANE_SINGULAR,
     "plane-singular",
     {"the normal equations of the plane network are singular; look for points that its "
      "observations do not determine, and for a-priori errors that leave them no weight",
      "平面网法方程奇异；请查找观测值不能确定的点，以及使观测值失去权的先验中误差"}},
    {BRENU_HEIGHTS_NOT_FINITE,
     "heights-not-finite",
     {"the adjusted values of the levelling network are no finite numbers; look for gross errors "
      "in coordinates and observations",
      "高程网的平差值不是有限数；请查找坐标和观测值中的粗差"}},
    {BRENU_COORDINATES_NOT_FINITE,
     "coordinates-not-finite",
     {"the adjusted values of the plane network are no finite numbers; look for gross errors in "
      "coordinates and observations",
      "平面网的平差值不是有限数；请查找坐标和观测值中的粗差"}},
    {BRENU_LINE_WITHOUT_LENGTH,
     "line-without-length",
     {"the points of the observed line {1} - {2} lie at the same place; correct their coordinates "
      "or the observation",
      "观测边 {1} - {2} 的两点重合；请改正其坐标或观测值"}},
    {BRENU_HEIGHT_RESIDUALS_TOO_LARGE,
     "height-residuals-too-large",
     {"the residuals of the levelling network are too large to compute with; look for gross "
      "errors in coordinates and observations",
      "高程网的改正数过大，无法计算；请查找坐标和观测值中的粗差"}},
    {BRENU_PLANE_RESIDUALS_TOO_LARGE,
     "plane-residuals-too-large",
     {"the residuals of the plane network are too large to compute with; look for gross errors in "
      "coordinates and observations",
      "平面网的改正数过大，无法计算；请查找坐标和观测值中的粗差"}},
    {BRENU_DIRECTION_TURNED,
     "direction-turned",
     {"the zero of the directions at {1} lies too close to north, which puts the direction {1} - "
      "{2} a full circle off; add the same angle, 90 degrees say, to all its directions",
      "{1} 的方向零位过于接近北方向，使方向 {1} - {2} 相差一整圆周；请给该站所有方向加上同一角度，"
      "例如 90 度"}},
    {BRENU_SNOOPING_UNDETERMINED,
     "snooping-undetermined",
     {"data snooping took out observations that the network cannot do without; take out lines to "
      "points that hang on a single one, which it cannot judge, or give a smaller ALPHA",
      "粗差探测剔除了网中不可缺少的观测值；请删去只靠一条边确定的点的边，粗差探测对其无法判断，或减"
      "小 ALPHA"}},
    {BRENU_NOT_PREPARED,
     "not-prepared",
     {"the points of the network of distances have no coordinates yet; place them first",
      "测边网各点尚无坐标；请先推算点位"}},
    {BRENU_NO_TRAVERSE,
     "no-traverse",
     {"no traverse joins two control points; between its points each needs a distance, and every "
      "point on the way directions to the one before and the one after",
      "没有连接两个已知点的导线；导线相邻点间须有边长，途中各点须有至前后两点的方向"}},
    {BRENU_POINTS_OFF_TRAVERSES,
     "points-off-traverses",
     {"coordinates cannot be computed for {points}; lead a traverse between two control points "
      "over each, with all its distances and directions",
      "无法计算坐标：{points}；请使每点位于两已知点间的导线上，且边长和方向齐全"}},
    {BRENU_POINT_NOT_PLACED,
     "point-not-placed",
     {"the point {1} is not placed yet; place all new points before the adjustment",
      "点 {1} 尚未定位；平差前请为所有待定点定位"}},
    {BRENU_POINT_AT_ZERO,
     "point-at-zero",
     {"the point {1} lies at X = 0, which stands for not placed; add a constant to all X",
      "点 {1} 的 X = 0，而 0 表示未定位；请给所有 X 加一常数"}},
    {BRENU_SIDE_UNDETERMINED,
     "side-undetermined",
     {"the side of the point {1} on the line {2} - {3} is undetermined; give approximate X and Y "
      "of it in the file, or a distance to a third point that is known or placed before it",
      "点 {1} 在直线 {2} - {3} 的哪一侧不能确定；请在文件中给出其近似 X、Y，或测至第三个已知或先已"
      "定位的点的边长"}},
    {BRENU_NO_PLACE,
     "no-place",
     {"no place can be found for {points}; measure each from two points that are known or placed "
      "before it, and check distances that do not meet",
      "无法定位：{points}；请从两个已知或先已定位的点测量各点，并检查不能相交的边长"}},
    {BRENU_FORMAT_IS_NOT,
     "format-is-not",
     {"this computation needs a job of format {v1}; set the parameter first",
      "此计算需要格式为 {v1} 的作业；请先设置参数"}},
    {BRENU_NO_CLOSURES,
     "no-closures",
     {"there are no closure errors: no line or traverse joins two control points and no loop "
      "closes",
      "没有闭合差：没有连接两个已知点的路线或导线，也没有闭合环"}},
    {BRENU_CLOSURES_NOT_OF_FORMAT,
     "closures-not-of-format",
     {"jobs of format {v1} have no closure errors with limits",
      "格式为 {v1} 的作业没有带限差的闭合差"}},
    {BRENU_CLOSURES_FAILED,
     "closures-failed",
     {"{v1} of {v2} closure errors are beyond their limits; look for gross errors along the "
      "routes that failed",
      "{v2} 个闭合差中有 {v1} 个超限；请沿超限路线查找粗差"}},
    {BRENU_POINT_LEFT_OUT,
     "point-left-out",
     {"the point {1} is left out: it has {&direction|distance}; observe it from another known "
      "point, or measure one more distance",
      "点 {1} 未参加平差：{&方向|边长}；请从另一个已知点观测该点，或加测一条边长"}},
    {BRENU_POINTS_UNDETERMINED,
     "points-undetermined",
     {"left out: {points}; what hangs together there can still move against the control points; "
      "tie it by a further direction or distance",
      "未参加平差：{points}；其整体相对于已知点仍可移动；请用另一个方向或边长加以约束"}},
    {BRENU_NOTHING_PLACED,
     "nothing-placed",
     {"no new point can be placed from the control points; observe from a known station, or two "
      "known points from a new one",
      "由已知点无法确定任何待定点；请从已知测站观测，或从待定点观测两个已知点"}},
    {BRENU_PLANE_NOT_CONVERGED,
     "plane-not-converged",
     {"the adjustment of the plane network does not converge: control points and observations "
      "contradict each other; check that distances are metres, X is north and Y east, and the "
      "control points, then look for gross errors by data snooping",
      "平面网平差不收敛：已知点与观测值相互矛盾；请检查边长是否以米为单位、X 是否为北、Y "
      "是否为东以及已知点坐标，再用粗差探测查找粗差"}},
    {BRENU_CONTROL_DOES_NOT_FIT,
     "control-does-not-fit",
     {"the control point {1} does not fit the others: they agree on {2} {=1.2 m} (test value "
      "{v2.1}); check its coordinates, and that it was the point sighted",
      "已知点 {1} 与其他各点不符：它们一致要求 {2} {=1.2 m}（检验值 {v2.1}）；请检查其坐标，以及所"
      "照准的是否为该点"}},
    {BRENU_HEIGHTS_LEFT_OUT,
     "heights-left-out",
     {"the heights of {points} are left out: no chain of height differences with line lengths "
      "leads there from a bench mark; level it from a known point",
      "高程未参加平差：{points}；没有带路线长度的高差将其与已知高程点相连；请从已知点测量水准"}},
    {BRENU_RULES_DIFFER,
     "rules-differ",
     {"the classic rules put {1} elsewhere, by {v1.4} m, {v2.1} standard errors; compute by them "
      "to see all",
      "经典规则所得 {1} 的位置相差 {v1.4} m，为中误差的 {v2.1} 倍；要看全部差别请按经典规则计算"}},
    {BRENU_CLASSIC_RULES_REFUSE,
     "classic-rules-refuse",
     {"the classic rules cannot compute this network; compute by them to see why",
      "经典规则不能计算此网；要看原因请按经典规则计算"}},
    {BRENU_LEVEL_SIGMA_CONTRADICTED,
     "level-sigma-contradicted",
     {"the residuals of the heights speak of {v1.2} mm for 1 km of levelling, not of the {v2.2} "
      "mm assumed; set the a-priori error of levelling if that is what it is worth",
      "高程改正数表明每千米水准中误差为 {v1.2} mm，而非设定的 {v2.2} mm；若确为如此，请设置水准先验"
      "中误差"}},
    {BRENU_GROUP_LEFT_OUT,
     "group-left-out",
     {"{points} are left out: they hang together, with {&direction|distance} to points that have "
      "a place; observe two of them from known points, or known points from two of them",
      "未参加平差：{points}；它们彼此相连，与已定位的点之间{&方向|边长}；请从已知点观测其中两点，或"
      "从其中两点观测已知点"}},
    {BRENU_NO_RELATIVE_ELLIPSE,
     "no-relative-ellipse",
     {"there is no relative ellipse of {1} and {2}: both are control points, or one has no "
      "adjusted "
      "position; ask for two points of which one or both are new",
      "{1} 与 {2} "
      "之间没有相对误差椭圆：两点均为已知点，或其中一点没有平差坐标；请指定至少含一个待定点的两"
      "点"}},
};
static_assert(AreAscending(kSentences));

}  // namespace

std::span<const SentenceEntry> SentencesOfComputing() { return kSentences; }

}  // namespace brenu
