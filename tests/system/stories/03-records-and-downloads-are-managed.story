# A download with three records: the technician walks, edits, inserts and deletes, then renames the download and deletes
# another one. The program is started again in between, and everything is still there.
$ mkdir -p Quorin
$ printf 'NAME|INFFILE\nMoisture Meter|moisture.txt\n' > Quorin/drivers.txt
$ printf 'DRIVER|FILE|DATE|ALIAS\nMoisture Meter|qrn0001.txt|20070301|\nMoisture Meter|qrn0002.txt|20070302|Second visit\n' > Quorin/qrnctrl.txt
$ printf 'FIELDNAME|VISIBLE|COPY|BLOB|DISPLAY|CSVNAME|DATATYPE|FORMULA\nDay|1|||||DATE|\nPlace|1|||||||\nRemark|1|||||||\n' > Quorin/moisture.txt
$ printf 'Day|Place|Remark\n01/03/2007|Hall|\n01/03/2007|Cellar|wet\n02/03/2007|Roof|\n' > Quorin/qrn0001.txt
$ printf 'Day|Place|Remark\n' > Quorin/qrn0002.txt
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > qrn0001.txt
      Second visit
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Next Record
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Download                               2/3
    --------------------------------------------------------------------------------
    > Day                                    01/03/2007
      Place                                  Cellar
      Remark                                 wet
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
# Each keystroke reaches the record, and the next command saves it.
> tap 2 1
{"done":"tap"}
> set very wet
{"done":"set"}
> choose Next Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Insert Record
{"done":"choose"}
> tap 1 1
{"done":"tap"}
> set Attic
{"done":"set"}
> choose Next Record
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> choose Previous Record
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Download                               3/4
    --------------------------------------------------------------------------------
      Day
    > Place                                  Attic
      Remark
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose First Record
{"done":"choose"}
> choose Delete Record
{"event":"box","text":"Delete Record?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"event":"box","text":"Are you sure?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer no
{"done":"answer"}
{"done":"choose"}
> choose Delete Record
{"event":"box","text":"Delete Record?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"event":"box","text":"Are you sure?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Download                               1/3
    --------------------------------------------------------------------------------
      Day                                    01/03/2007
    > Place                                  Cellar
      Remark                                 very wet
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
> choose Close
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Back
{"done":"choose"}
> choose Exit
{"event":"end"}
{"done":"choose"}
$ cat Quorin/qrn0001.txt
Day|Place|Remark
01/03/2007|Cellar|very wet
|Attic|
02/03/2007|Roof|
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> choose Rename
>> set First visit
{"done":"set"}
>> choose Ok
{"done":"choose"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > First visit
      Second visit
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
# A cancelled rename returns the last answer that was given: the second download gets the first one's name.
> hold 1
{"done":"hold"}
> choose Rename
>> choose Back
{"done":"choose"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > First visit
      First visit
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
$ cat Quorin/qrnctrl.txt
DRIVER|FILE|DATE|ALIAS
Moisture Meter|qrn0001.txt|20070301|First visit
Moisture Meter|qrn0002.txt|20070302|First visit
$ quorin-console --strict
> choose Start...
{"done":"choose"}
> choose Ok
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > First visit
      First visit
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> choose Delete
{"event":"box","text":"Delete Download File?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"event":"box","text":"Are you sure?","buttons":"yesno","icon":"question","title":"Quorin"}
>> answer yes
{"done":"answer"}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Downloads
    --------------------------------------------------------------------------------
    > First visit
    --------------------------------------------------------------------------------
    [File] Open | Delete | Rename | New                                       [Back]
{"done":"show"}
> choose Open
{"event":"status","text":"Busy"}
{"event":"status","text":null}
{"done":"choose"}
> tick 100
{"done":"tick"}
> show
      Download                               1/1
    --------------------------------------------------------------------------------
    > Day
      Place
      Remark
    --------------------------------------------------------------------------------
    [File] Next Record | Previous Record | First Record | Last Record | Close
                                   [Edit] New Record | Insert Record | Delete Record
{"done":"show"}
$ cat Quorin/qrnctrl.txt
DRIVER|FILE|DATE|ALIAS
Moisture Meter|qrn0002.txt|20070302|First visit
$ ls Quorin
drivers.txt
moisture.txt
qrn0002.txt
qrnctrl.txt
