// The Chinese labels of the reports, as the bytes of code page 936 (GBK).
#pragma once

namespace brenu::label {

// 路线：  route
inline constexpr char kRoute[] = "\xc2\xb7\xcf\xdf\xa3\xba";
// 高程闭合差：  height misclosure
inline constexpr char kHeightMisclosure[] = "\xb8\xdf\xb3\xcc\xb1\xd5\xba\xcf\xb2\xee\xa3\xba";
// 限差：  limit, after three spaces
inline constexpr char kLimit[] =
    "   "
    "\xcf\xde\xb2\xee\xa3\xba";
// 角度闭合差：  angular misclosure
inline constexpr char kAngleMisclosure[] = "\xbd\xc7\xb6\xc8\xb1\xd5\xba\xcf\xb2\xee\xa3\xba";
// 边长闭合差：  linear misclosure
inline constexpr char kLengthMisclosure[] = "\xb1\xdf\xb3\xa4\xb1\xd5\xba\xcf\xb2\xee\xa3\xba";
// 路线长：  length of the route
inline constexpr char kRouteLength[] = "\xc2\xb7\xcf\xdf\xb3\xa4\xa3\xba";
// 限差：  limit
inline constexpr char kLengthLimit[] = "\xcf\xde\xb2\xee\xa3\xba";
// 相对精度：1:  relative precision 1:, after three spaces
inline constexpr char kRelativePrecision[] =
    "   "
    "\xcf\xe0\xb6\xd4\xbe\xab\xb6\xc8\xa3\xba"
    "1:";
// [高程网]  [height network]
inline constexpr char kLevelNet[] =
    "["
    "\xb8\xdf\xb3\xcc\xcd\xf8"
    "]";
// 每公里中误差：  standard error per kilometre
inline constexpr char kErrorPerKilometre[] =
    "\xc3\xbf\xb9\xab\xc0\xef\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";
// [平面网]  [plane network]
inline constexpr char kPlaneNet[] =
    "["
    "\xc6\xbd\xc3\xe6\xcd\xf8"
    "]";
// 验前单位权中误差：  a-priori standard error of unit weight
inline constexpr char kAprioriError[] =
    "\xd1\xe9\xc7\xb0\xb5\xa5\xce\xbb\xc8\xa8\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";
// 验后单位权中误差：  a-posteriori standard error of unit weight
inline constexpr char kPosteriorError[] =
    "\xd1\xe9\xba\xf3\xb5\xa5\xce\xbb\xc8\xa8\xd6\xd0\xce\xf3\xb2\xee\xa3\xba";

}  // namespace brenu::label
