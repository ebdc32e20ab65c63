// The 61 functions of brenu.h.  What they do, their units and failure values stand there; the names
// of functions and records are the same.
//
// Text crosses the interface as narrow strings: in the code page of the system on Windows, in UTF-8
// elsewhere.  The library is brenu.dll or libbrenu.so, beside the program or where the system looks;
// with BRENU_SURVEY defined it is brenu-survey.dll or libbrenu-survey.so, and the functions of survey.h
// are declared, too.
using System;
using System.Runtime.InteropServices;

namespace Brenu
{

public static partial class Native
{
#if BRENU_SURVEY
    private const string Library = "brenu-survey";
#else
    private const string Library = "brenu";
#endif

    // ---- Life of a context, parameters ----

    [DllImport(Library)]
    public static extern IntPtr StartAdjustment();

    [DllImport(Library)]
    public static extern void EndAdjustment(IntPtr context);

    [DllImport(Library)]
    public static extern void SetAdjParam(IntPtr context, AdjParam param);

    [DllImport(Library)]
    public static extern AdjParam GetAdjParam(IntPtr context);

    // ---- Files ----

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool OpenBrenuAdjustFile(IntPtr context, string path);

    [DllImport(Library)]
    public static extern int SaveBrenuAdjustFile(IntPtr context, string path);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool LoadKorvelAdjustFile(IntPtr context, string path);

    // ---- Points ----

    [DllImport(Library)]
    public static extern uint GetPointCount(IntPtr context);

    [DllImport(Library)]
    public static extern int AddPoint(IntPtr context, int index, PointData point);

    [DllImport(Library)]
    public static extern int DeletePoint(IntPtr context, int index);

    [DllImport(Library)]
    public static extern int GetPoint(IntPtr context, int index, out PointData result);

    [DllImport(Library)]
    public static extern int GetOriginalPoint(IntPtr context, int index, out PointData result);

    [DllImport(Library)]
    public static extern int SetPoint(IntPtr context, int index, PointData point);

    [DllImport(Library)]
    public static extern int GetPointNum(IntPtr context, string name);

    // ---- Observations ----

    [DllImport(Library)]
    public static extern int GetObsDataCount(IntPtr context, int station);

    [DllImport(Library)]
    public static extern int AddObsData(
        IntPtr context, int station, string target, ObsData observation);

    [DllImport(Library)]
    public static extern int AddObsData2(
        IntPtr context, int station, string target1, string target2, ObsData observation1,
        ObsData observation2, byte reconcile);

    [DllImport(Library)]
    public static extern int DeleteObsData(IntPtr context, int station, string target);

    [DllImport(Library)]
    public static extern int GetObsData(
        IntPtr context, int station, string target, out ObsData result);

    [DllImport(Library)]
    public static extern int SetObsData(
        IntPtr context, int station, string target, ObsData observation);

    // ---- Computations ----

    [DllImport(Library)]
    public static extern int GetNetType(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool ApproxCalc(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetApproxResult(IntPtr context, int number, out PointData result);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool LeastSquareAdj(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool NonDirectionAdj(IntPtr context);

    [DllImport(Library)]
    public static extern int DataSnooping(
        IntPtr context, uint kind, double levelAlpha, double planeAlpha);

    // ---- Results ----

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetPlaneResult(IntPtr context, int index, out PlaneResult result);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetDirAngleResult(
        IntPtr context, int station, string target, out double residual, out double adjusted,
        out double apriori);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetLengthResult(
        IntPtr context, int station, string target, out double residual, out double adjusted,
        out double apriori);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetAzimuthResult(
        IntPtr context, int station, string target, out double residual, out double adjusted,
        out double apriori);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetAzAndLenPrecision(
        IntPtr context, int station, string target, out double azimuth, out double azimuthError,
        out double length, out double lengthError, out int relativePrecision);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetVerticalResult(
        IntPtr context, int index, out VerticalResult result);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetHeightObsResult(
        IntPtr context, int station, string target, out double residual, out double adjusted,
        out double sigma, out double weight);

    // ---- Closure errors and reports ----

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool CalculateCloseError(IntPtr context);

    [DllImport(Library)]
    public static extern int GetCloseErrorCount(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool GetCloseError(IntPtr context, int index, out CloseError result);

    [DllImport(Library)]
    public static extern int GetCloseErrorMark(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool ExportResultFile(IntPtr context, string path);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool ExportCloseErrorFile(IntPtr context, string path);

    // ---- Trilateration ----

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool JudgeTrilateration(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool InitializeDataTrilateration(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool TrilaterationDirection(IntPtr context);

    // direction: an array of 255 bytes.
    [DllImport(Library)]
    public static extern int GetTrilaterationDirection(
        IntPtr context, out CircleRecord first, out CircleRecord second,
        [In, Out] byte[] direction);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool CalcTrilaterationpPoint(
        IntPtr context, byte side, CircleRecord first, CircleRecord second, string name,
        out uint remaining);

    // ---- Traverses ----

    [DllImport(Library)]
    public static extern int GetTraverseResult(
        IntPtr context, int index, out double angle, out double angleCorrection,
        out double azimuth, out double length, out double dx, out double dy,
        out double dxCorrection, out double dyCorrection, out double x, out double y,
        out double angleMisclosure, out double lengthMisclosure, out int relativePrecision);

    // ---- Reductions of single observations ----

    [DllImport(Library)]
    public static extern void CentreCorrect(
        double stationEccentricity, double stationAngle, double targetEccentricity,
        double targetAngle, ref double distance, ref double direction);

    [DllImport(Library)]
    public static extern double DovCorrect(double xi, double eta, double azimuth, double elevation);

    [DllImport(Library)]
    public static extern double HeightMarkCorrect(
        double semiMajor, double semiMinor, double targetHeight, double latitude, double azimuth);

    [DllImport(Library)]
    public static extern double SectionCorrect(
        double semiMajor, double semiMinor, double distance, double latitude, double azimuth);

    [DllImport(Library)]
    public static extern double DistanceReduction(
        double stationHeight, double instrumentHeight, double targetPointHeight,
        double targetHeight, double slopeDistance, double latitude, double azimuth);

    [DllImport(Library)]
    public static extern double AstronomicalAzimuthReduction(
        double astronomicalAzimuth, double astronomicalLongitude, double latitude,
        double geodeticLongitude);

    [DllImport(Library)]
    public static extern double DirectionCorrect(
        double x1, double y1, double x2, double y2, double radius);

    [DllImport(Library)]
    public static extern double DistanceCorrect(
        double y1, double y2, double distance, double radius);

    [DllImport(Library)]
    public static extern double PlaneAzimuthCorrect(
        double azimuth, double latitude, double x1, double y1, double x2, double y2,
        double semiMajor, double semiMinor, double radius);

    [DllImport(Library)]
    public static extern void MeteorologicalCorrect(
        double pressure1, double dry1, double wet1, double unused1, double wavelength,
        double pressure2, double dry2, double wet2, double unused2, double distance,
        out double correction);

    [DllImport(Library)]
    public static extern void MeteorologicalCorrect2(
        double pressure1, double temperature1, double humidity1, double wavelength,
        double pressure2, double temperature2, double humidity2, double distance,
        out double correction);

    [DllImport(Library)]
    public static extern void ConstAddMultiplyCorrect(
        double constant, double scale, double distance, out double corrected);

    [DllImport(Library)]
    public static extern void ProjectionCorrect(
        double height, double undulation, double radius, double lineHeight, double mode,
        double distance, ref double projected);

    [DllImport(Library)]
    public static extern void GaussCorrect(
        double height, double undulation, double radius, double lineHeight, double mode,
        double distance, double y1, double y2, double meanRadius, ref double projected,
        out double gridDistance);

    [DllImport(Library)]
    public static extern double GetRm(
        double latitude, double equatorRadius, double polarRadius, double secondEccentricity);

    [DllImport(Library)]
    public static extern double GetRn(
        double latitude, double equatorRadius, double polarRadius, double secondEccentricity,
        double azimuth);
}

}
