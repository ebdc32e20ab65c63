// Sentences about the data before a computation.
#include "review/sentence_table.h"

namespace brenu {

namespace {

constexpr SentenceEntry kSentences[] = {
    {BRENU_NO_POINTS,
     "no-points",
     {"there are no points; add them and their observations", "没有点；请补充点及其观测值"}},
    {BRENU_NO_CONTROL,
     "no-control",
     {"no control point is among the points; give one or more the type 01 (height known), 10 (X "
      "and Y known) or 11 (both)",
      "各点中没有已知点；请将至少一个点的类型设为 01（高程已知）、10（X、Y 已知）或 11（均已知）"}},
    {BRENU_NO_OBSERVATIONS,
     "no-observations",
     {"there are points but no observations; add observations", "有点而没有观测值；请补充观测值"}},
    {BRENU_COORDINATE_NOT_FINITE,
     "coordinate-not-finite",
     {"a coordinate of the point {1} is no finite number; correct it",
      "点 {1} 的坐标不是有限数；请改正"}},
    {BRENU_OBSERVATION_NOT_FINITE,
     "observation-not-finite",
     {"an observation of the line {1} - {2} is no finite number; correct it",
      "{1} - {2} 的观测值不是有限数；请改正"}},
    {BRENU_DISTANCE_NEGATIVE,
     "distance-negative",
     {"the distance {1} - {2} is negative; correct it", "边长 {1} - {2} 为负；请改正"}},
    {BRENU_DISTANCE_ERROR_NOT_POSITIVE,
     "distance-error-not-positive",
     {"the a-priori error MS + MR * S of the distance {1} - {2} is not positive; correct MS and MR",
      "边长 {1} - {2} 的先验中误差 MS + MR * S 不为正；请改正 MS 和 MR"}},
    {BRENU_DIRECTION_ERROR_NOT_POSITIVE,
     "direction-error-not-positive",
     {"the a-priori error of the directions is not positive; correct MO",
      "方向的先验中误差不为正；请改正 MO"}},
    {BRENU_DISTANCE_ERRORS_LARGE,
     "distance-errors-large",
     {"MS and MR give a distance of {v1} m a standard error of {v2} m, so that distances hardly "
      "count; they are in metres, 5 mm + 5 ppm is MS:0.005 and MR:0.000005",
      "按 MS 和 MR，{v1} m 的边长中误差为 {v2} m，边长几乎不起作用；MS 以米为单位，5 mm + 5 ppm 应"
      "写作 MS:0.005、MR:0.000005"}},
    {BRENU_LINE_LENGTH_MISSING,
     "line-length-missing",
     {"the height difference {1} - {2}{+1} has no line length and takes no part; give the length "
      "in the field of the distance",
      "高差 {1} - {2}{+1} 没有路线长度，不参加平差；请在边长项中给出长度"}},
    {BRENU_AZIMUTH_WITHOUT_PLANE,
     "azimuth-without-plane",
     {"the line {1} - {2} has an azimuth, which takes no part in a levelling network; perhaps a "
      "comma was written for the decimal point of its height difference",
      "{1} - {2} 有方位角，而方位角在高程网中不起作用；可能是把高差的小数点写成了逗号"}},
    {BRENU_FORMAT_UNKNOWN,
     "format-unknown",
     {"there is no format {v1}, so that the network is computed as one of format 0; give 0, 1 or 3",
      "没有格式 {v1}，按格式 0 计算；请给出 0、1 或 3"}},
    {BRENU_FORMAT_LEAVES_HEIGHTS,
     "format-leaves-heights",
     {"formats 1 and 3 compute the plane only; adjust the heights as a job of their own",
      "格式 1 和 3 只计算平面；高程请另立作业平差"}},
    {BRENU_FORMAT_COUNTS_DIRECTIONS,
     "format-counts-directions",
     {"directions and azimuths take no part with format 3; by the classic rules they count in the "
      "redundancy all the same, so that m0 and the standard errors come out too small; every line "
      "of a station file has a direction",
      "格式 3 中方向和方位角不参加平差；按经典规则它们仍计入多余观测数，使 m0 "
      "和各中误差偏小；测站观测文件的每一行都有方向"}},
    {BRENU_FORMAT_NEEDS_PLANE,
     "format-needs-plane",
     {"formats 1 (traverses without orientation) and 3 (distances only) need points with known X "
      "and Y; correct the format or the types of the points",
      "格式 1（无定向导线）和格式 3（测边网）需要 X、Y 已知的点；请改正格式或点的类型"}},
    {BRENU_LINE_LENGTHS_IN_KILOMETRES,
     "line-lengths-in-kilometres",
     {"the levelling lines are {v1.3} m long in the middle, as if their lengths were in "
      "kilometres; give them in metres",
      "水准路线长度的中位数为 {v1.3} m，像是以千米为单位；请以米给出"}},
    {BRENU_DISTANCE_OUT_OF_PROPORTION,
     "distance-out-of-proportion",
     {"the distance {1} - {2} is {v1.3} m, but from the coordinates in the file {v2.3} m{+3}; "
      "check the unit of the distances and the coordinates of the control points",
      "边长 {1} - {2} 为 {v1.3} m，而由文件中的坐标反算为 {v2.3} m{+3}；请检查边长的单位和已知点的"
      "坐标"}},
    {BRENU_CONTROL_FAR_AWAY,
     "control-far-away",
     {"the {2} of the control point {1} lies {v1} m from all others, which spread over {v2} m; "
      "check it for a slip, and X and Y for an exchange",
      "已知点 {1} 的 {2} 与其他各点相距 {v1} m，而其他各点的分布范围为 {v2} m；请检查有无笔误，X 与"
      " Y 是否颠倒"}},
    {BRENU_AXES_EXCHANGED,
     "axes-exchanged",
     {"the angles and azimuths between control points, such as those at {1}, fit with X and Y of "
      "all "
      "control points exchanged ({v1} of them), and none does as they are; give X as north and Y "
      "as "
      "east",
      "已知点之间的角度和方位角（如测站 {1}）在交换所有已知点的 X、Y 后相符（{v1} "
      "个），而现在无一相符；X 应为北，Y 应为东"}},
};
static_assert(AreAscending(kSentences));

}  // namespace

std::span<const SentenceEntry> SentencesOfData() { return kSentences; }

}  // namespace brenu
