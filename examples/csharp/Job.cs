// Adjusts a project file, lists the points with their error ellipses and writes the report.
// Compile it together with bindings/csharp/*.cs; with BRENU_SURVEY defined it adjusts by the rules of
// textbooks.
using System;
using Brenu;

public static class Job
{
    private static string PointLine(IntPtr job, int index)
    {
        Native.GetPoint(job, index, out PointData point);
        string line = point.name.PadRight(8);
        if (Native.GetPlaneResult(job, index, out PlaneResult plane))
        {
            line += FormattableString.Invariant(
                $"  X {plane.x:F4} Y {plane.y:F4}  ellipse {1000 * plane.e:F1} x ") +
                FormattableString.Invariant($"{1000 * plane.f:F1} mm at {plane.t:F4}");
        }
        if (Native.GetVerticalResult(job, index, out VerticalResult height))
        {
            line += FormattableString.Invariant(
                $"  H {height.height:F4} +- {1000 * height.sigma:F1} mm");
        }
        return line;
    }

    private static bool Adjust(IntPtr job)
    {
#if BRENU_SURVEY
        var usual = new brenu_options();
        return Native.brenu_adjust(job, ref usual);
#else
        return Native.LeastSquareAdj(job);
#endif
    }

    // What is wrong; null when the job is done.
    private static string Run(IntPtr job, string[] args)
    {
        if (args.Length != 2) return "usage: job PROJECT-FILE REPORT";
        if (!Native.OpenBrenuAdjustFile(job, args[0])) return "the project file cannot be read";
        if (!Adjust(job)) return "the network cannot be adjusted";
        if (!Native.ExportResultFile(job, args[1])) return "the report cannot be written";
        int count = (int)Native.GetPointCount(job);
        for (int i = 0; i < count; ++i) Console.WriteLine(PointLine(job, i));
        return null;
    }

    public static int Main(string[] args)
    {
        IntPtr job = Native.StartAdjustment();
        string fault = Run(job, args);
        Native.EndAdjustment(job);
        if (fault != null) Console.Error.WriteLine(fault);
        return fault == null ? 0 : 1;
    }
}
