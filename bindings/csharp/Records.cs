// The records of brenu.h, with the same names and layouts.
using System;
using System.Runtime.InteropServices;

namespace Brenu
{

// Lengths are metres, angles dd.mmss (30.15205 is 30 degrees 15' 20.5") unless said otherwise.

[StructLayout(LayoutKind.Sequential)]
public struct AdjParam
{
    public double MO;     // a-priori standard error of a direction or azimuth, arc-seconds
    public double MS;     // constant part of that of a distance
    public double MR;     // part proportional to the length: 5 ppm is 5e-6
    public int Lvl1;      // levelling grade
    public int Lvl1Limit; // mm per square root of kilometres
    public int Lvl2;      // traverse grade
    public int Lvl2Limit; // arc-seconds per square root of the angles
    public int Limit;     // tolerance factor of the traverse check
    public int format;    // 0 ordinary, 1 traverse without orientation, 3 distances only
}

[StructLayout(LayoutKind.Sequential)]
public struct PointData
{
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 128)]
    public string name;
    public int type; // tens digit 1: plane coordinates known; units digit 1: height known
    public int reserved;
    public double x; // 0.0 is "not given"
    public double y;
    public double h;
}

[StructLayout(LayoutKind.Sequential)]
public struct ObsData
{
    public double distance;   // 0.0 absent
    public double direction;  // -1.0 absent
    public double heightDiff; // 0.0 absent; needs a distance beside it
    public double azimuth;    // -1.0 absent
}

[StructLayout(LayoutKind.Sequential)]
public struct CloseError
{
    [MarshalAs(UnmanagedType.ByValTStr, SizeConst = 256)]
    public string route;
    public double heightMisclosure; // mm; levelling only
    public double heightLimit;      // mm
    public double angleMisclosure;  // arc-seconds; traverses only
    public double angleLimit;       // arc-seconds
    public double lengthMisclosure;
    public double routeLength;
    public int relativePrecision; // N of 1:N
    public int reserved1;
    public double lengthLimit;
    [MarshalAs(UnmanagedType.I1)]
    public bool angleWithinLimit;
    [MarshalAs(UnmanagedType.I1)]
    public bool heightWithinLimit;
    [MarshalAs(UnmanagedType.I1)]
    public bool mark; // the record passes
    [MarshalAs(UnmanagedType.ByValArray, SizeConst = 21)]
    public byte[] reserved2;
}

[StructLayout(LayoutKind.Sequential)]
public struct PlaneResult
{
    public double x;
    public double y;
    public double mx; // standard errors
    public double my;
    public double mp;
    public double e; // semi-axes of the error ellipse; 0 for control points
    public double f;
    public double t; // azimuth of the major semi-axis
}

[StructLayout(LayoutKind.Sequential)]
public struct VerticalResult
{
    public double correction;
    public double height;
    public double sigma; // standard error
}

[StructLayout(LayoutKind.Sequential)]
public struct CircleRecord
{
    public IntPtr name; // narrow string, valid until the next call on the context
    public double x;
    public double y;
    public double radius;
}

}
