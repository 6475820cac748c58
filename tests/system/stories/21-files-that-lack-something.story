# Files as editors, other tools and an interrupted program leave them.
# A byte-order mark is not part of the first name, and stays where it is.
$ mkdir Quorin && printf '\357\273\277NAME|INFFILE\r\nMeter|meter.txt\r\n' > Quorin/drivers.txt
$ printf '\357\273\277DRIVER|FILE|DATE|ALIAS\nMeter|qrn0001.txt|20070301|\n' > Quorin/qrnctrl.txt
$ printf '\357\273\277FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\n' > Quorin/meter.txt
$ printf '\357\273\277Place\nHall\n' > Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> tap 0 1
{"done":"tap"}
> set Roof
{"done":"set"}
> choose Next Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Place                                  Roof
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"done":"choose"}
$ od -c Quorin/qrn0001.txt
0000000 357 273 277   P   l   a   c   e  \n   R   o   o   f  \n
0000016
# A package that an editor has saved: with a byte-order mark, an empty line before the driver's row and one at the
# end.
$ printf '\357\273\277# Soil\r\n\r\nSoil|soil.txt\r\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\r\nPlot|1||||||\r\n\r\n' > Quorin/soil.qvd
# A package of a driver's row and a header alone is copied as it is.
$ printf 'Bare|bare.txt\nFIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\n' > Quorin/bare.qvd
$ rm Quorin/qrnctrl.txt
$ quorin-console --strict
> choose inf editor...
{"done":"choose"}
> choose Add Driver...
{"done":"choose"}
> show
      Add Driver
    --------------------------------------------------------------------------------
    > .\Quorin\bare.qvd
      .\Quorin\soil.qvd
    --------------------------------------------------------------------------------
    [Install...]                                                              [Back]
{"done":"show"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
> tap 1
{"done":"tap"}
> choose Install...
{"event":"status","text":"Busy"}
{"event":"box","text":"Driver installed","buttons":"ok","icon":"none","title":"Quorin"}
>> answer ok
{"done":"answer"}
{"event":"status","text":null}
{"done":"choose"}
> close
{"done":"close"}
> close
{"done":"close"}
$ cat Quorin/drivers.txt Quorin/soil.txt Quorin/bare.txt
﻿NAME|INFFILE
Meter|meter.txt
Bare|bare.txt
Soil|soil.txt
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
Plot|1||||||
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
# Its inf table gets a blank row when a download is opened, and the register, which is missing, is made by "New".
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> tap 1
{"done":"tap"}
> show
      Downloads
    --------------------------------------------------------------------------------
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> choose New
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 200
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"done":"choose"}
$ cat Quorin/bare.txt Quorin/qrnctrl.txt
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
|||||||
DRIVER|FILE|DATE|ALIAS
Bare|qrn0001.txt|20070305|
# An empty inf table also gets its header.
$ : > Quorin/bare.txt && rm Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> tap 1
{"done":"tap"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Close
{"done":"choose"}
$ cat Quorin/bare.txt
FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA
|||||||
# A file that another tool is writing is empty for a moment: it is read a second time.
$ : > Quorin/drivers.txt && (sleep 0.4 && printf 'NAME|INFFILE\nWritten|late.txt\n' > Quorin/drivers.txt) > /dev/null 2>&1 &
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> show
      Drivers
    --------------------------------------------------------------------------------
    > Written
    --------------------------------------------------------------------------------
    [Ok]                                                                      [Back]
{"done":"show"}
$ cat Quorin/drivers.txt
NAME|INFFILE
Written|late.txt
# A NUL becomes a blank, in a file and in typed text.
$ printf 'NAME|INFFILE\nSoil\000Meter|soil.txt\n' > Quorin/drivers.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> show
      Drivers
    --------------------------------------------------------------------------------
    > Soil Meter
    --------------------------------------------------------------------------------
    [Ok]                                                                      [Back]
{"done":"show"}
> choose Ok
{"done":"choose"}
> choose New
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tap 0 1
{"done":"tap"}
> set "a\u0000b"
{"done":"set"}
> choose Close
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
$ od -c Quorin/qrn0002.txt
0000000   P   l   o   t  \n   a       b  \n
0000011
