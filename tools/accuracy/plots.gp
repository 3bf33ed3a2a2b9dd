# The plots of docs/accuracy.md, made in the folder `docs` from accuracy.py's points in the current folder.

png = 'pngcairo noenhanced font "DejaVu Sans,10" size'
blue = "#2060b0"
orange = "#d07000"
grey = "#808080"
set border linecolor rgb grey
set grid linetype 1 linecolor rgb "#dddddd"
set key outside bottom center horizontal

set terminal @png 900,620
set output docs."/accuracy-instants.png"
set multiplot layout 2,1
set xrange [1900:2101]
set yrange [-4.5:4.5]
set ytics 1
set ylabel "minutes"
set title "Errors of the series: each New and Full Moon, 1900 to 2100"
plot "instants.dat" using 1:(strcol(2) eq "New" ? $3 : NaN) notitle with points pt 7 ps 0.25 lc rgb blue, \
     "" using 1:(strcol(2) eq "Full" ? $3 : NaN) notitle with points pt 7 ps 0.25 lc rgb orange, \
     keyentry title "New Moons" with points pt 7 lc rgb blue, \
     keyentry title "Full Moons" with points pt 7 lc rgb orange, \
     3.5 title "limit in the tests" lc rgb grey dt 2, -3.5 notitle lc rgb grey dt 2
set title "Errors of the shown times, without summer time"
plot "instants.dat" using 1:(strcol(2) eq "New" ? $4 : NaN) notitle with points pt 7 ps 0.25 lc rgb blue, \
     "" using 1:(strcol(2) eq "Full" ? $4 : NaN) notitle with points pt 7 ps 0.25 lc rgb orange, \
     "" using 1:5 title "dynamical minus Universal Time" with lines lc rgb "black"
unset multiplot

set terminal @png 900,400
set bmargin 6
set output docs."/accuracy-lit.png"
set title "Error of the lit fraction, 1900 to 2100"
set xrange [0:29.6]
set yrange [-0.0045:0.0045]
set ytics 0.001
set xlabel "days since New Moon"
set ylabel "error of the lit fraction (0 to 1)"
plot "lit.dat" notitle with points pt 7 ps 0.25 lc rgb blue, \
     0.004 title "limit in the tests" lc rgb grey dt 2, -0.004 notitle lc rgb grey dt 2

set output docs."/accuracy-clock.png"
set title "What the local clock does to the picture"
set xrange [-12.5:14.5]
set xtics 2
set yrange [0:0.08]
set ytics 0.02 nomirror
set y2range [0:80]
set y2tics 20
set xlabel "local time minus Universal Time, hours"
set ylabel "lit fraction (0 to 1)"
set y2label "per cent of the time"
plot "clock.dat" using 1:3 title "largest error (left)" with linespoints pt 7 ps 0.6 lc rgb blue, \
     "" using 1:2 title "rms error (left)" with linespoints pt 6 ps 0.6 lc rgb blue, \
     "" using 1:4 axes x1y2 title "another tray picture (right)" with linespoints pt 5 ps 0.6 lc rgb orange

set output docs."/accuracy-days.png"
reset
set border linecolor rgb grey
set grid xtics linetype 1 linecolor rgb "#dddddd"
set xrange [0:365]
set xtics ("Jan" 0, "Feb" 31, "Mar" 59, "Apr" 90, "May" 120, "Jun" 151, "Jul" 181, "Aug" 212, "Sep" 243, "Oct" 273, \
           "Nov" 304, "Dec" 334)
set yrange [3.6:-0.6]
set ytics ("Last Full Moon to come" 0, "Next Full Moon left out" 1, "corrected lines" 2, "wrong edge dark" 3) scale 0
set style fill solid noborder
set multiplot layout 2,1 margins 0.2,0.98,0.07,0.91 spacing 0.18
do for [year in "2026 2027"] {
  set title year.", with a clock on Universal Time"
  plot "days.dat" using ($1 == year ? $2 : NaN):4:2:3:($4 - 0.35):($4 + 0.35) notitle with boxxyerror lc rgb orange
}
unset multiplot
