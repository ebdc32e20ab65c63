// The functions and records of survey.h; what they do stands there, the names are the same.
//
// Text goes in and out as arrays of bytes: in with a NUL at the end, UTF-8 for paths on Windows; out up to
// the NUL.  Texts that are returned are constants, for Marshal.PtrToStringAnsi.
#if BRENU_SURVEY
using System;
using System.Runtime.InteropServices;

namespace Brenu
{

public static partial class Native
{
    // ---- Findings ----

    [DllImport(Library)]
    public static extern IntPtr brenu_version();

    [DllImport(Library)]
    public static extern void brenu_set_threads(int count);

    [DllImport(Library)]
    public static extern int brenu_finding_count(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_get_finding(
        IntPtr context, int index, out brenu_finding result);

    [DllImport(Library)]
    public static extern int brenu_finding_text(IntPtr context, int index, byte[] text, int room);

    [DllImport(Library)]
    public static extern int brenu_finding_name(
        IntPtr context, int index, int number, byte[] text, int room);

    [DllImport(Library)]
    public static extern int brenu_finding_excerpt(
        IntPtr context, int index, byte[] text, int room);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_finding_value(
        IntPtr context, int index, int number, out double result);

    [DllImport(Library)]
    public static extern IntPtr brenu_code_id(int code);

    // ---- Files ----

    [DllImport(Library)]
    public static extern int brenu_read_file(IntPtr context, byte[] path);

    [DllImport(Library)]
    public static extern int brenu_read_memory(IntPtr context, byte[] data, UIntPtr size);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_check_data(IntPtr context);

    // ---- Computations by either set of rules ----

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_adjust(IntPtr context, ref brenu_options options);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_approximate(IntPtr context, ref brenu_options options);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_compute_closures(IntPtr context, ref brenu_options options);

    [DllImport(Library)]
    public static extern int brenu_taken_out_count(IntPtr context);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_get_taken_out(
        IntPtr context, int index, out brenu_taken_out result);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_get_alternative(
        IntPtr context, int index, int number, out brenu_observation result);

    [DllImport(Library)]
    public static extern IntPtr brenu_report(IntPtr context, int form, int language, byte[] title);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_import(
        IntPtr context, IntPtr heights, byte[] paths, byte[] control, ref brenu_import_options options,
        byte[] log);

    [DllImport(Library)]
    public static extern int brenu_untested_count(IntPtr context, int network);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_get_control_fit(
        IntPtr context, int index, out brenu_control_fit result);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_get_figures(
        IntPtr context, int network, out brenu_figures result);

    // ---- Walking ----

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_next_point(IntPtr context, ref int index);

    [DllImport(Library)]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool brenu_next_observation(IntPtr context, ref brenu_pair pair);
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_finding
{
    public int code;
    public int severity;
    public int line; // of the file, from 1; 0 for none
    public int nameCount;
    public int valueCount;
    public int reserved;
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_options
{
    public int rules;         // 0 textbook, 1 classic
    public int test;          // 0 none, 1 w, 2 tau
    public double alpha;      // 0 stands for 0.001
    public double critical;   // 0 for that of alpha
    public double levelSigma; // metres for 1 km; 0 stands for 0.001
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_import_options
{
    public int steps;              // sum of steps that are left out or added
    public int reserved;
    public double refraction;      // coefficient
    public double constant;        // of distances, mm
    public double scale;           // of distances, mm/km
    public double height;          // mean, above the ellipsoid, metres
    public double projectionScale; // into the plane; 0 counts as 1
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_observation
{
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)]
    public string station;
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)]
    public string target;
    public int kind; // 1 direction, 2 distance, 3 azimuth, 4 height difference
    public int reserved;
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_taken_out
{
    public brenu_observation observation;
    public int alternatives;
    public int reserved;
    public double testValue;
    public double error; // metres or arc-seconds
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_control_fit
{
    public double x; // metres
    public double y;
    public double h;
    public double wx;
    public double wy;
    public double wh;
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_figures
{
    public int controlPoints;
    public int newPoints;
    public int redundancy;
    public int leftOut;
    public double m0;
}

[StructLayout(LayoutKind.Sequential)]
public struct brenu_pair
{
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)]
    public string station;
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)]
    public string target;
    public ObsData observation;
}

}
#endif
