# Files that other tools have written: line ends of another system, no last line end, bytes that are not UTF-8, rows
# that are too long. A row that nobody edits keeps every byte.
$ mkdir -p Quorin
$ printf 'NAME|INFFILE\r\nMeter|meter.txt' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\r\nMeter|qrn0001.txt|20070301|Caf\351\r\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nPlace|1||||||\nRemark|1||||||' > Quorin/meter.txt
$ printf 'Place|Remark\nHall|\377\376raw\nCellar|wet|two|more\nRoof|windy' > Quorin/qrn0001.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Last Record
{"done":"choose"}
> tap 1 1
{"done":"tap"}
> set calm
{"done":"set"}
> choose Previous Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Download                               2/3
    --------------------------------------------------------------------------------
      Place                                  Cellar
    > Remark                                 wet
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose New Record
{"done":"choose"}
> choose Close
{"done":"choose"}
$ od -c Quorin/qrn0001.txt
0000000   P   l   a   c   e   |   R   e   m   a   r   k  \n   H   a   l
0000020   l   | 377 376   r   a   w  \n   C   e   l   l   a   r   |   w
0000040   e   t   |   t   w   o   |   m   o   r   e  \n   R   o   o   f
0000060   |   c   a   l   m  \n   |  \n
0000070
$ od -c Quorin/qrnctrl.txt
0000000   D   R   I   V   E   R   |   F   I   L   E   |   D   A   T   E
0000020   |   A   L   I   A   S  \r  \n   M   e   t   e   r   |   q   r
0000040   n   0   0   0   1   .   t   x   t   |   2   0   0   7   0   3
0000060   0   1   |   C   a   f 351  \r  \n
0000071
